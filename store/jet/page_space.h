#pragma once

#include "jet_types.h"
#include "pager.h"

// Taking pages of the file and giving them back, and changing the sets of pages that say whose they are. Everything
// here is done in the topmost level of the pager. Error 3049 where a map is damaged, 3026 where the file can't grow.
namespace ledgix::jet {

// A page that nobody uses, all zeros: the lowest free one inside the file, or a new one at its end.
PageNumber AllocatePage(Pager& pager);

// Gives a page back. It must be out of every other map.
void FreePage(Pager& pager, PageNumber page);

// Puts a page into a usage map or takes it out. A map that does not reach to the page is moved, or grows by pages of
// bits. No change when the page is in the map, or not in it, already.
void AddToMap(Pager& pager, RowId map, PageNumber page);
void RemoveFromMap(Pager& pager, RowId map, PageNumber page);

// The highest page below `bound` in a map; 0 if there is none.
PageNumber HighestInMap(Pager& pager, RowId map, PageNumber bound);

// A new empty usage map: a row on the page `beside`, or on a fresh page of maps when that one is full or 0.
RowId AddMap(Pager& pager, PageNumber beside);

}  // namespace ledgix::jet

#pragma once

#include <cstddef>
#include <cstdint>

#include "jet_types.h"

// Where things stand in the pages of both generations: the one place that knows. Numbers are little-endian but inside
// index entries. Row pointer: u8 slot, u24 page. All offsets count bytes.
namespace ledgix::jet {

// First byte of a page; the second is 1.
enum class PageKind : std::uint8_t {
    kHeader = 0x00,
    kData = 0x01,  // rows of tables, long values and usage maps
    kDefinition = 0x02,
    kIndexNode = 0x03,
    kIndexLeaf = 0x04,
    kUsageBitmap = 0x05,
};

inline constexpr PageNumber kAllocationPage = 1;  // a data page; its row 0 is the map of free pages
inline constexpr PageNumber kCatalogPage = 2;     // definition of MSysObjects

// Definitions of MSysACEs, MSysQueries and MSysRelationships.
inline constexpr PageNumber kAccessPage = 3;
inline constexpr PageNumber kQueriesPage = 4;
inline constexpr PageNumber kRelationshipsPage = 5;

inline constexpr std::uint8_t kPageInUse = 0x01;  // second byte of a page

// Owner fields of data pages that belong to no table.
inline constexpr std::uint32_t kUsageMapOwner = 0;
inline constexpr std::uint32_t kAllocationOwner = 1;          // of the page kAllocationPage
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"

// Slots of a data page.
inline constexpr std::uint16_t kSlotStart = 0x1FFF;
inline constexpr std::uint16_t kSlotPointer = 0x4000;  // the row lives elsewhere; a row pointer stands here
inline constexpr std::uint16_t kSlotHidden = 0x8000;   // reached through such a pointer only
inline constexpr std::uint16_t kSlotDeleted = kSlotPointer | kSlotHidden;
inline constexpr std::size_t kMostSlots = 256;         // a slot number is one byte
inline constexpr std::size_t kMostSlotsWritten = 255;  // the engine stops one earlier
inline constexpr std::size_t kRowPointerSize = 4;

// Data page: free bytes u16, owner u32, number of slots u16, slots u16 each. Rows are packed from the end downwards:
// row r ends where row r - 1 starts.
struct DataPageLayout {
    std::size_t free_bytes;
    std::size_t owner;
    std::size_t slot_count;
    std::size_t slots;
};

// Usage map, a row: its kind u8, then either the first page u32 and a bitmap, or u32 numbers of bitmap pages.
inline constexpr std::uint8_t kInlineMap = 0;
inline constexpr std::uint8_t kReferenceMap = 1;
inline constexpr std::size_t kMapFirstPage = 1;
inline constexpr std::size_t kInlineBitmap = 5;
inline constexpr std::size_t kMapReferences = 1;
inline constexpr std::size_t kBitmapPageBits = 4;  // where the bits of a bitmap page begin

// Table definition, spread over pages: each has 8 bytes of its own with the next page in them; those of the first
// count as part of the definition.
inline constexpr std::size_t kDefinitionFreeBytes = 2;        // Jet 4; "VC" in Jet 3
inline constexpr std::uint16_t kDefinitionMarkJet3 = 0x4356;  // "VC"
inline constexpr std::size_t kDefinitionNextPage = 4;
inline constexpr std::size_t kDefinitionPageHeader = 8;
inline constexpr std::uint8_t kUserTableMark = 0x4E;
inline constexpr std::uint8_t kSystemTableMark = 0x53;

// Numbers that Jet 4 puts into definitions; their meaning is unknown.
inline constexpr std::uint32_t kDefinitionMark = 1625;  // in the header, column records and logical index records
inline constexpr std::uint32_t kIndexBlockMark = 1923;
inline constexpr std::uint32_t kSecondDefinitionMark = 1;

// Then follow: index statistics, column records, column names, index blocks, logical index records, their names,
// maps of long value columns, FF FF.
struct DefinitionLayout {
    std::size_t length;
    std::size_t mark;  // 0 where there is none, as in all that follows
    std::size_t second_mark;
    std::size_t row_count;
    std::size_t last_autonumber;
    std::size_t table_mark;
    std::size_t columns_ever;
    std::size_t variable_columns_ever;
    std::size_t column_count;
    std::size_t logical_index_count;
    std::size_t real_index_count;
    std::size_t owned_map;
    std::size_t free_space_map;
    std::size_t statistics;       // end of the header
    std::size_t statistics_size;  // of one real index
    std::size_t built_entries;    // within its statistics
    std::size_t distinct_keys;
    std::size_t name_length_size;
};

struct ColumnRecordLayout {
    std::size_t size;
    std::size_t type;
    std::size_t mark;
    std::size_t number;
    std::size_t variable_index;
    std::size_t ordinal;
    std::size_t country;
    std::size_t precision;  // numeric columns: u8 precision, u8 scale, in the place of the sort order
    std::size_t code_page;
    std::size_t flags;
    std::size_t text_flags;
    std::size_t fixed_offset;
    std::size_t length;
};

inline constexpr std::uint8_t kColumnFixed = 0x01;
inline constexpr std::uint8_t kColumnUpdatable = 0x02;
inline constexpr std::uint8_t kColumnAutonumber = 0x04;
inline constexpr std::uint8_t kColumnOfSystemTable = 0x10;
inline constexpr std::uint8_t kColumnMasked = 0x20;  // Jet 4 combines its contents with an unknown key stream
inline constexpr std::uint8_t kColumnAutonumberGuid = 0x40;
inline constexpr std::uint8_t kTextCompressed = 0x01;
inline constexpr std::uint16_t kCountryCode = 1;
inline constexpr std::uint16_t kSortOrder = 0x0409;  // General
inline constexpr std::uint16_t kCodePage = 1252;

struct IndexBlockLayout {
    std::size_t size;
    std::size_t columns;  // ten times u16 column number, u8 order
    std::size_t map;
    std::size_t root;
    std::size_t flags;
    bool marked;              // begins with kIndexBlockMark
    std::uint8_t more_flags;  // set in every block
};

inline constexpr std::size_t kIndexColumnSlots = 10;
inline constexpr std::size_t kIndexColumnSlotSize = 3;
inline constexpr std::uint16_t kNoIndexColumn = 0xFFFF;
inline constexpr std::uint8_t kIndexAscending = 1;
inline constexpr std::uint8_t kIndexUnique = 0x01;
inline constexpr std::uint8_t kIndexIgnoresNulls = 0x02;
inline constexpr std::uint8_t kIndexRequired = 0x08;

struct LogicalIndexLayout {
    std::size_t size;
    bool marked;  // begins with kDefinitionMark
    std::size_t number;
    std::size_t real_number;
    std::size_t relation_side;
    std::size_t relation_index;
    std::size_t relation_table;
    std::size_t cascade_updates;
    std::size_t cascade_deletes;
    std::size_t type;
};

inline constexpr std::uint8_t kRelationReferencedSide = 1;
inline constexpr std::uint8_t kRelationReferencingSide = 2;
inline constexpr std::uint32_t kNoRelationIndex = 0xFFFFFFFF;
inline constexpr std::uint8_t kNoRelationCascade = 4;
inline constexpr std::uint8_t kLogicalPrimaryKey = 1;
inline constexpr std::uint8_t kLogicalRelation = 2;

// A column number and two row pointers for each memo or OLE column, behind the index names.
inline constexpr std::size_t kLongColumnMapsSize = 10;
inline constexpr std::uint16_t kDefinitionEnd = 0xFFFF;

// Row: count of columns, fixed part, variable data, offsets of variable columns, null mask.
struct RowLayout {
    std::size_t count_size;   // also where the fixed part starts
    std::size_t offset_size;  // of one variable offset, and of their count
    bool has_jump_table;
    std::size_t longest;
};

// A row must leave room for the pointer that takes its place when it moves.
inline constexpr std::size_t kShortestRow = kRowPointerSize;

// Long value, in a row: length and kind u32, row pointer, 4 bytes more, then the data of the inside kind.
inline constexpr std::size_t kLongValueHeader = 12;
inline constexpr std::size_t kLongValuePointer = 4;
inline constexpr std::uint32_t kLongValueLength = 0x3FFFFFFF;
inline constexpr std::uint32_t kLongValueKind = 0xC0000000;
inline constexpr std::uint32_t kLongValueInside = 0x80000000;
inline constexpr std::uint32_t kLongValueOneRow = 0x40000000;
inline constexpr std::uint32_t kLongValueChain = 0x00000000;

// Index page: free bytes u16, owner, previous, next and tail page u32; prefix length; a bit for each byte that follows
// an entry; the entries.
struct IndexPageLayout {
    std::size_t free_bytes;
    std::size_t owner;
    std::size_t previous;
    std::size_t next;
    std::size_t tail;
    std::size_t prefix_length;
    std::size_t prefix_length_size;
    std::size_t mask;
    std::size_t mask_size;
    std::size_t entries;
};

inline constexpr std::size_t kLeafPointerSize = 4;   // u24 BE page, u8 slot
inline constexpr std::size_t kChildPointerSize = 4;  // u32 BE page, behind the row pointer in nodes

// Header page. The first fields are row pointers to the map of free pages and to a second map, then the pages of the
// four system tables.
inline constexpr std::size_t kHeaderFreePageMap = 0x18;
inline constexpr std::size_t kHeaderSecondMap = 0x1C;
inline constexpr std::size_t kHeaderSystemTables = 0x20;
inline constexpr std::size_t kHeaderFormatName = 0x04;
inline constexpr std::size_t kHeaderVersion = 0x14;
inline constexpr std::size_t kHeaderMasked = 0x18;  // start of the region that a key stream masks
inline constexpr std::size_t kHeaderCodePage = 0x3C;
inline constexpr std::size_t kHeaderDatabaseKey = 0x3E;
inline constexpr std::size_t kHeaderPassword = 0x42;
inline constexpr std::size_t kHeaderCreationDate = 0x72;  // Jet 4

struct HeaderLayout {
    std::size_t masked_size;
    std::size_t password_size;
    bool password_masked_by_date;  // and there is a creation date
    std::size_t country;           // 0 where there is none
    std::size_t sort_order;
    std::size_t build_number;  // of the engine that made the file
    std::size_t engine_mark;   // 0 where there is none
    std::size_t commit_bytes;  // 256 cells of two bytes, to the end of the page
};

struct Format {
    Generation generation;
    std::size_t page_size;
    std::uint64_t longest_file;
    std::size_t character_size;        // of names, and of text that is not compressed
    std::size_t new_map_size;          // bytes of a usage map when it is made
    std::size_t longest_inside_value;  // bytes of a long value that are kept in the row
    std::size_t longest_value_row;     // bytes of a row on a page of long values
    HeaderLayout header;
    DataPageLayout data_page;
    DefinitionLayout definition;
    ColumnRecordLayout column;
    IndexBlockLayout index_block;
    LogicalIndexLayout logical_index;
    RowLayout row;
    IndexPageLayout index_page;

    // Pages that one bitmap page covers.
    PageNumber PagesPerBitmap() const { return static_cast<PageNumber>((page_size - kBitmapPageBits) * 8); }
};

const Format& FormatOf(Generation generation);

}  // namespace ledgix::jet

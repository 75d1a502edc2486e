#pragma once

#include <string>
#include <vector>

namespace ledgix::jet {

class Pager;

// One broken rule of the file format. Codes begin with the letter of their subject: H header page, P use of pages,
// U usage maps, T table definitions, D rows and the pages they are on, L long values, I indexes, C catalogue; X1 is a
// check that damage kept from finishing.
struct Finding {
    std::string code;
    std::string text;  // what is wrong, and where: "page 17: ..."
};

enum class Strictness {
    kAnyWriter,  // rules that every sound file keeps, whoever wrote it
    kOwnFiles,   // those too that other writers break now and then without harm
};

// Checks the whole file, page by page, and goes on behind a fault. Changes nothing. Time and memory are bounded by the
// length of the file, whatever it holds. The list is empty for a sound file. Error 3043 when it cannot be read.
std::vector<Finding> CheckStructure(Pager& pager, Strictness strictness);

}  // namespace ledgix::jet

#pragma once

#include <cstdint>

// The engine's own constants, as callers pass them.
namespace ledgix::dao {

enum RecordsetType : std::int16_t {
    kOpenTable = 1,
    kOpenDynaset = 2,
    kOpenSnapshot = 4,
    kOpenForwardOnly = 8,
};

// Added up.
enum RecordsetOption : std::int16_t {
    kNoOptions = 0,
    kDenyWrite = 1,
    kDenyRead = 2,
    kReadOnly = 4,
};

// Field types. The numbers are those of the file format.
enum FieldType : std::int16_t {
    kBoolean = 1,
    kByte = 2,
    kInteger = 3,  // 16 bits
    kLong = 4,     // 32 bits
    kCurrency = 5,
    kSingle = 6,
    kDouble = 7,
    kDate = 8,
    kBinary = 9,
    kText = 10,
    kLongBinary = 11,
    kMemo = 12,
    kGuid = 15,
    kDecimal = 16,
};

enum FieldAttribute : std::int32_t {
    kFixedField = 1,
    kVariableField = 2,
    kAutoIncrementField = 16,
};

}  // namespace ledgix::dao

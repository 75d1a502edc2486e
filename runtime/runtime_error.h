#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace ledgix::runtime {

// Error numbers that the program raises or tests for. Those from 3000 on are the database engine's.
enum class ErrorNumber : int {
    kInvalidArgument = 5,
    kOverflow = 6,
    kSubscript = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kFileNotFound = 53,
    kDeviceIo = 57,
    kPermissionDenied = 70,
    kObjectNotSet = 91,
    kInvalidNull = 94,
    kDuplicateKey = 457,
    kNotEditing = 3020,
    kTableExists = 3010,
    kNoCurrentRecord = 3021,
    kDuplicateIndexValue = 3022,
    kDatabaseNotFound = 3024,
    kDiskFull = 3026,
    kDatabaseReadOnly = 3027,
    kPasswordProtected = 3031,
    kDatabaseDamaged = 3049,
    kFileInUse = 3045,
    kCannotOpenFile = 3051,
    kRecordTooLarge = 3047,
    kNullInKey = 3058,
    kTooFewParameters = 3061,
    kDuplicateDestination = 3063,
    kSelectExecuted = 3065,
    kDiskIo = 3043,
    kSyntax = 3075,
    kTableNotFound = 3078,
    kInvalidName = 3125,
    kUnknownInsertField = 3127,
    kInvalidStatement = 3129,
    kEncrypted = 3112,
    kOrderBySyntax = 3138,
    kFromSyntax = 3131,
    kInsertSyntax = 3134,
    kSelectSyntax = 3141,
    kUpdateSyntax = 3144,
    kFieldTooSmall = 3163,
    kFieldNotUpdatable = 3164,
    kRecordDeleted = 3167,
    kTooManyFields = 3190,
    kDuplicateField = 3191,
    kChangedByAnother = 3197,
    kDatabaseExists = 3204,
    kInvalidOperationForType = 3219,
    kFeatureNotAvailable = 3251,
    kInvalidFieldType = 3259,
    kLockedByOther = 3260,
    kTableInUse = 3262,
    kItemNotFound = 3265,
    kInvalidIndex = 3277,
    kPrimaryKeyExists = 3283,
    kIndexExists = 3284,
    kUnrecognizedFormat = 3343,
    kValueCountDiffers = 3346,
    kTooComplex = 3360,
    kObjectClosed = 3420,
    kTypeConversion = 3421,
    kCriteriaMismatch = 3464,
    kTooManyIndexes = 3626,
};

// The source that errors of the database engine bear, and the one of all others.
inline constexpr std::string_view kEngineSource = "Microsoft JET Database Engine";
inline constexpr std::string_view kProgramSource = "Ledgix";

// The one exception type of the program.
class RuntimeError : public std::exception {
public:
    RuntimeError(int number, std::string_view source, std::string_view description);

    int number() const noexcept { return number_; }
    bool Is(ErrorNumber number) const noexcept { return number_ == static_cast<int>(number); }
    const std::string& source() const noexcept { return source_; }
    const std::string& description() const noexcept { return description_; }

    // "number - description", as message boxes show it.
    const char* what() const noexcept override { return text_.c_str(); }

private:
    int number_;
    std::string source_;
    std::string description_;
    std::string text_;
};

// Raises an error of the program itself, with the standard description of its number.
[[noreturn]] void RaiseError(ErrorNumber number);
[[noreturn]] void RaiseError(ErrorNumber number, std::string_view description);

// Raises an error whose source is the database engine.
[[noreturn]] void RaiseEngineError(ErrorNumber number, std::string_view description);

}  // namespace ledgix::runtime

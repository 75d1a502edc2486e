#include "runtime_error.h"

namespace ledgix::runtime {

namespace {

std::string_view StandardDescription(ErrorNumber number) {
    switch (number) {
        case ErrorNumber::kInvalidArgument:
            return "Invalid procedure call or argument";
        case ErrorNumber::kOverflow:
            return "Overflow";
        case ErrorNumber::kSubscript:
            return "Subscript out of range";
        case ErrorNumber::kDivisionByZero:
            return "Division by zero";
        case ErrorNumber::kTypeMismatch:
            return "Type mismatch";
        case ErrorNumber::kFileNotFound:
            return "File not found";
        case ErrorNumber::kDeviceIo:
            return "Device I/O error";
        case ErrorNumber::kPermissionDenied:
            return "Permission denied";
        case ErrorNumber::kObjectNotSet:
            return "Object variable or With block variable not set";
        case ErrorNumber::kInvalidNull:
            return "Invalid use of Null";
        case ErrorNumber::kDuplicateKey:
            return "This key is already associated with an element of this collection";
        default:
            return "Application-defined or object-defined error";
    }
}

}  // namespace

RuntimeError::RuntimeError(int number, std::string_view source, std::string_view description)
    : number_(number),
      source_(source),
      description_(description),
      text_(std::to_string(number) + " - " + description_) {}

void RaiseError(ErrorNumber number) {
    RaiseError(number, StandardDescription(number));
}

void RaiseError(ErrorNumber number, std::string_view description) {
    throw RuntimeError(static_cast<int>(number), kProgramSource, description);
}

void RaiseEngineError(ErrorNumber number, std::string_view description) {
    throw RuntimeError(static_cast<int>(number), kEngineSource, description);
}

}  // namespace ledgix::runtime

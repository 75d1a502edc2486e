#pragma once

#include <stdexcept>

namespace ledgix::cli {

// A command won't do what it was asked for; the text says why.
class RequestRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace ledgix::cli

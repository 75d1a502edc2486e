#pragma once

#include <optional>
#include <string>

namespace ledgix::test {

// Gives an environment variable a value, or takes it away, as long as the object lives.
class ScopedEnvironment {
public:
    ScopedEnvironment(const std::string& name, const std::optional<std::string>& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

}  // namespace ledgix::test

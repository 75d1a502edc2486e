#include "scoped_environment.h"

#include <cstdlib>

namespace ledgix::test {

namespace {

void SetVariable(const std::string& name, const std::optional<std::string>& value) {
#ifdef _WIN32
    _putenv_s(name.c_str(), value.value_or("").c_str());
#else
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
#endif
}

}  // namespace

ScopedEnvironment::ScopedEnvironment(const std::string& name, const std::optional<std::string>& value) : name_(name) {
    if (const char* before = std::getenv(name.c_str()))
        before_ = before;
    SetVariable(name_, value);
}

ScopedEnvironment::~ScopedEnvironment() {
    SetVariable(name_, before_);
}

}  // namespace ledgix::test

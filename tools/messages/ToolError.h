#pragma once

#include <stdexcept>

namespace vastrelline {

// The command line asks for something that cannot be, whatever the files hold. The tool ends with code 2.
// Other exceptions stand for a failure and end it with code 1.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vastrelline

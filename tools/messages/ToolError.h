// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

#include "messages/ExitCode.h"

namespace vastrelline {

// What ends a command, in three parts: where, what, and what to do about it. what() is all of it in one line:
// "frame.raw: is a folder, not a file; name a file".
class ToolError : public std::runtime_error {
public:
    // where    mostly a path; empty: the whole command
    // remedy   may be empty
    ToolError(ExitCode code, std::string where, std::string what, std::string remedy = {});

    ExitCode Code() const { return code_; }
    const std::string& Where() const { return where_; }
    const std::string& What() const { return what_; }
    const std::string& Remedy() const { return remedy_; }

private:
    ExitCode code_;
    std::string where_;
    std::string what_;
    std::string remedy_;
};

// The command line asks for something that cannot be, whatever the files hold.
class UsageError : public ToolError {
public:
    explicit UsageError(std::string what, std::string remedy = {});
};

class InputError : public ToolError {
public:
    InputError(std::string where, std::string what, std::string remedy = {});
};

class ProcessingError : public ToolError {
public:
    ProcessingError(std::string where, std::string what, std::string remedy = {});
};

class OutputError : public ToolError {
public:
    OutputError(std::string where, std::string what, std::string remedy = {});
};

// The user asked the tool to end before it was done.
class CancelledError : public ToolError {
public:
    CancelledError();
};

}  // namespace vastrelline

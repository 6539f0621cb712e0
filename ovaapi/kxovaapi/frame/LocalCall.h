// The frame of an exported function that works in this process, or only combines other exported functions: the
// library's module context for the call, and the name that its lines are traced under.
#pragma once

#include "frame/guarded.h"
#include "frame/traceLines.h"
#include "kxframework.h"

class LocalCall
{
 public:
    // traceName: the function's name in the trace, with its colon and blank.
    explicit LocalCall(const char* traceName) noexcept : name_(traceName) {}
    LocalCall(const LocalCall&) = delete;
    LocalCall& operator=(const LocalCall&) = delete;

    const char* name() const noexcept { return name_; }

 private:
    const char* name_;
    ModuleContext context_;
};

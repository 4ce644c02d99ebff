// SPDX-License-Identifier: MIT
// One function that a base-caller library exports.
#pragma once

#include <string_view>

#include "platform/Guest.h"
#include "platform/Library.h"

// Every call into a library goes through one of these, which restores the state of the process after the call (see
// GuestCall).
template <class Function>
class CEntryPoint;

template <class Result, class... Arguments>
class CEntryPoint<Result (*)(Arguments...)> {
  public:
    using Function = Result (*)(Arguments...);

    CEntryPoint() = default;
    // Empty when the library does not export `name`. `sampleName`, empty for none, is used in the warning about a
    // process that ends during a call. `module` and the text of `sampleName` must outlive the entry point.
    CEntryPoint(const platform::Library& module, const char* name, std::string_view sampleName)
        : function(reinterpret_cast<Function>(module.Symbol(name))), library(module.Name()), sample(sampleName) {}
    CEntryPoint& operator=(Function newFunction) {
        function = newFunction;
        return *this;
    }

    explicit operator bool() const { return function != nullptr; }
    Result operator()(Arguments... arguments) const {
        const platform::GuestCall call(library, sample);
        return function(arguments...);
    }

  private:
    Function function = nullptr;
    std::string_view library, sample;
};

// SPDX-License-Identifier: MIT
#include "lanetools/run/SetAside.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "lanetools/samples/StoredSample.h"
#include "platform/Error.h"
#include "platform/Host.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

bool IsTaken(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

std::string FailedPath(const std::string& path) {
    return fs::path(path).replace_extension(".fsd").string();
}

bool IsWhole(const std::string& path) {
    return ReadStoredFile(path).state != SampleState::Damaged;
}

// Nothing is replaced, and nothing but the two names is changed. Returns the system's reason if it cannot be done.
std::string Rename(const std::string& from, const std::string& to) {
    const platform::Error error = platform::host::RenameNew(from, to);
    if (error == EEXIST) return to + " exists";
    return error ? error.Text() : "";
}

}  // namespace

std::string SetAsidePath(const std::string& path) {
    const fs::path whole = path;
    return (whole.parent_path() / ('.' + whole.filename().string() + ".set-aside")).string();
}

CSetAside::CSetAside(const CRunPlan& plan) {
    for (const CBadResult& result : plan.damaged) {
        Waiting one{result.path, SetAsidePath(result.path), platform::IdentityOf(FailedPath(result.path))};
        if (!result.path.ends_with(".esd"))
            one.aside.clear();  // the program calls the sample again in spite of it
        else if (IsTaken(one.path))
            if (const std::string reason = Rename(one.path, one.aside); !reason.empty()) {
                SettleAll();
                throw std::runtime_error(one.path + ": the damaged result cannot be set aside: " + reason);
            }
        waiting.push_back(one);
    }
}

CSetAside::~CSetAside() {
    try {
        SettleAll();
    } catch (const std::exception&) {
        // What has not got its name back is found by the next run.
    }
}

void CSetAside::Settle() {
    SettleAll();
    if (!problem.empty()) throw std::runtime_error(problem);
}

void CSetAside::SettleAll() {
    while (!waiting.empty()) {
        const Waiting one = waiting.back();
        waiting.pop_back();
        if (const std::string reason = one.aside.empty() ? SettleFailed(one) : SettleCalled(one); !reason.empty())
            problem = one.path + ": the damaged result " + reason;
    }
}

// The successor is a new .esd file, or a new .fsd file if the call has failed.
std::string CSetAside::SettleCalled(const Waiting& one) {
    const std::string failedPath = FailedPath(one.path);
    const bool hasNewFailed = platform::IdentityOf(failedPath) != one.failed && IsWhole(failedPath);
    if (!hasNewFailed && !(IsTaken(one.path) && IsWhole(one.path))) {
        const std::string reason = Rename(one.aside, one.path);
        return reason.empty() ? "" : "stays under the name " + one.aside + ": " + reason;
    }
    std::error_code error;
    fs::remove(one.aside, error);
    return error ? "cannot be removed: " + error.message() : "";
}

std::string CSetAside::SettleFailed(const Waiting& one) {
    const std::string called = fs::path(one.path).replace_extension(".esd").string();
    if (platform::IdentityOf(one.path) != one.failed || !IsWhole(called)) return "";
    std::error_code error;
    fs::remove(one.path, error);
    return error ? "cannot be removed: " + error.message() : "";
}

}  // namespace lanetools

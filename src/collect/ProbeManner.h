#pragma once

#include "ProcessRunner.h"

#include <chrono>
#include <optional>

namespace tarnwick {

/// How a server is probed.
struct ProbeManner {
    ProcessRequest::Launch launch = ProcessRequest::Launch::atOnce;
    /// For how long the connection stays open for the next probe; absent where each probe has its own.
    std::optional<std::chrono::seconds> sharedFor = {};
};

} // namespace tarnwick

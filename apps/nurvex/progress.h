#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace nurvex {

/// A line on standard error that tells what the program is at, once that takes over a second. It
/// is shown on terminals only, and erased at the end.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void SetStage(const std::string& name);
    /// Erases the line for good, so that something else can be said.
    void Stop();

private:
    void tick();

    using Clock = std::chrono::steady_clock;
    const Clock::time_point started = Clock::now();
    std::mutex mutex;
    std::condition_variable stopped;
    bool running = false;
    std::string stage;
    std::thread ticker;
};

} // namespace nurvex

#include "apps/nurvex/progress.h"

#include <cstdio>
#include <unistd.h>

namespace nurvex {

namespace {

constexpr const char* ERASE_LINE = "\r\033[K";

} // namespace

Progress::Progress() {
    if (isatty(STDERR_FILENO) != 0) {
        running = true;
        ticker = std::thread(&Progress::tick, this);
    }
}

Progress::~Progress() {
    Stop();
}

void Progress::SetStage(const std::string& name) {
    const std::lock_guard lock(mutex);
    stage = name;
}

void Progress::Stop() {
    {
        const std::lock_guard lock(mutex);
        running = false;
    }
    stopped.notify_all();
    if (ticker.joinable()) {
        ticker.join();
    }
}

void Progress::tick() {
    using namespace std::chrono_literals;
    std::unique_lock lock(mutex);
    bool shown = false;
    while (!stopped.wait_for(lock, shown ? 200ms : 1000ms, [this] { return !running; })) {
        const std::chrono::duration<double> elapsed = Clock::now() - started;
        std::fprintf(stderr, "%s%s (%.1f s)", ERASE_LINE, stage.c_str(), elapsed.count());
        std::fflush(stderr);
        shown = true;
    }
    if (shown) {
        std::fputs(ERASE_LINE, stderr);
        std::fflush(stderr);
    }
}

} // namespace nurvex

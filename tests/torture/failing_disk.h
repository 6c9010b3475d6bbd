#pragma once

#include "torture/disk_watcher.h"

#include <array>
#include <string>

namespace cuedrill::torture {

/// How calls of one kind fail.
struct Fault {
    const char* name;
    CallKind kind;
    int code;  ///< the engine's result code that the call gives
    bool late; ///< the call does its work and then reports the error
};

/// A disk that fails at one call, or from one call on.
class FailingDisk final : public DiskWatcher {
public:
    FailingDisk();

    /// @param point the call that fails: 0 is the next one of the fault's kind.
    void arm(const Fault& fault, int point, bool from_then_on);
    void disarm() { armed_ = false; }

    /// Whether any call has failed since `arm`.
    [[nodiscard]] bool has_failed() const { return has_failed_; }

    std::optional<int> before(const FileCall& call) override;
    int after(const FileCall& call) override;

private:
    [[nodiscard]] bool fails_now(const FileCall& call, bool late);

    Fault fault_{};
    int calls_left_ = 0;
    bool from_then_on_ = false;
    bool armed_ = false;
    bool has_failed_ = false;
    bool swallows_writes_;
};

/// Every kind of call with the errors that the engine's VFS of the system gives for it.
[[nodiscard]] const std::array<Fault, 13>& all_faults();

} // namespace cuedrill::torture

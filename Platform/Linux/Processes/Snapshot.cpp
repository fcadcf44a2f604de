// The list of running processes.

#include "Platform/Linux/Base/Errors.h"
#include "Platform/Linux/Base/Handle.h"
#include "Platform/Linux/Processes/ProcFs.h"
#include "Platform/Text/Unicode.h"

#include <tlhelp32.h>
#include <windows.h>

#include <exception>
#include <iterator>
#include <mutex>
#include <new>
#include <vector>

namespace {

/// The processes there were when it was made, and how far a caller has read.
class ProcessSnapshot final : public Platform::HandleObject {
public:
    explicit ProcessSnapshot(std::vector<Platform::ProcessFacts> processes) : processes_(std::move(processes)) {}

    bool First(PROCESSENTRY32W& entry) {
        const std::lock_guard lock(mutex_);
        next_ = 0;
        return NextLocked(entry);
    }

    bool Next(PROCESSENTRY32W& entry) {
        const std::lock_guard lock(mutex_);
        return NextLocked(entry);
    }

private:
    bool NextLocked(PROCESSENTRY32W& entry) {
        if (next_ == processes_.size()) return false;
        const Platform::ProcessFacts& facts = processes_[next_++];
        entry = PROCESSENTRY32W{};
        entry.dwSize = sizeof entry;
        entry.th32ProcessID = static_cast<DWORD>(facts.id);
        entry.cntThreads = facts.threads;
        entry.th32ParentProcessID = static_cast<DWORD>(facts.parent);
        const std::wstring name = Platform::WideFromNative(facts.fileName);
        // Cut to the field; the terminator is there already.
        name.copy(entry.szExeFile, std::size(entry.szExeFile) - 1);
        return true;
    }

    const std::vector<Platform::ProcessFacts> processes_;
    std::mutex mutex_;
    std::size_t next_ = 0;  // guarded by mutex_
};

using Step = bool (ProcessSnapshot::*)(PROCESSENTRY32W&);

BOOL Read(HANDLE snapshot, LPPROCESSENTRY32W entry, Step step) noexcept try {
    const auto object = Platform::FindHandle<ProcessSnapshot>(snapshot);
    if (!object) return FALSE;
    if (!entry || entry->dwSize != sizeof *entry) return Platform::Fail(ERROR_INVALID_PARAMETER);
    return ((*object).*step)(*entry) ? TRUE : Platform::Fail(ERROR_NO_MORE_FILES);
} catch (const std::exception&) {
    return Platform::Fail(ERROR_NOT_ENOUGH_MEMORY);
}

}  // namespace

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId) noexcept try {
    // The identifier matters only to kinds of lists that there are none of here.
    (void)processId;
    if (flags != TH32CS_SNAPPROCESS) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE handle = Platform::AddHandle(std::make_shared<ProcessSnapshot>(Platform::ProcFs().Processes()));
    return handle ? handle : INVALID_HANDLE_VALUE;
} catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return INVALID_HANDLE_VALUE;
}

BOOL Process32FirstW(HANDLE snapshot, LPPROCESSENTRY32W entry) noexcept {
    return Read(snapshot, entry, &ProcessSnapshot::First);
}

BOOL Process32NextW(HANDLE snapshot, LPPROCESSENTRY32W entry) noexcept {
    return Read(snapshot, entry, &ProcessSnapshot::Next);
}

#include "Platform/Linux/Base/PutOffWork.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Platform {

namespace {

std::vector<PutOffWork*>& WorkOfThisThread() {
    static thread_local std::vector<PutOffWork*> work;
    return work;
}

}  // namespace

PutOffWork::PutOffWork(const HandleObject* needlessWith, std::function<void()> work)
    : needlessWith_(needlessWith), work_(std::move(work)) {
    WorkOfThisThread().push_back(this);
}

PutOffWork::~PutOffWork() {
    std::erase(WorkOfThisThread(), this);
}

bool PutOffWork::DoBeforeSleep(const std::function<bool(const HandleObject*)>& isWaitedFor) {
    std::vector<PutOffWork*>& all = WorkOfThisThread();
    bool didAny = false;
    for (;;) {
        const auto due = std::ranges::find_if(
            all, [&](const PutOffWork* each) { return !each->needlessWith_ || !isWaitedFor(each->needlessWith_); });
        if (due == all.end()) return didAny;
        const std::function<void()> work = std::move((*due)->work_);
        all.erase(due);
        work();
        didAny = true;
    }
}

}  // namespace Platform

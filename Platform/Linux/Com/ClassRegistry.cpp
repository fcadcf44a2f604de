#include "Platform/Linux/Com/ClassRegistry.h"

namespace Platform {

namespace {

// Set to null before any constructor runs, so the order in which libraries register does not matter.
constinit const ClassRegistration* newest = nullptr;

}  // namespace

ClassRegistration::ClassRegistration(const CLSID& classId, MakeObject make) noexcept
    : classId_(classId), make_(make), next_(newest) {
    newest = this;
}

MakeObject ClassRegistration::Find(REFCLSID classId) noexcept {
    for (const ClassRegistration* entry = newest; entry; entry = entry->next_) {
        if (entry->classId_ == classId) return entry->make_;
    }
    return nullptr;
}

}  // namespace Platform

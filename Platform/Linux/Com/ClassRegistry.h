// The classes that CoCreateInstance knows. A library that has one registers it, and asks the linker to keep the
// registration, so that creation does not depend on the libraries whose objects it makes.
#pragma once

#include <unknwn.h>

namespace Platform {

/// Makes an object of a class and hands out the interface asked for, with one reference.
using MakeObject = HRESULT (*)(REFIID iid, void** object) noexcept;

/// Makes a class known for the life of the process. Only as an object of static lifetime; names of classes are unique.
class ClassRegistration {
public:
    ClassRegistration(const CLSID& classId, MakeObject make) noexcept;
    ClassRegistration(const ClassRegistration&) = delete;
    ClassRegistration& operator=(const ClassRegistration&) = delete;

    /// The maker of the class; null for one that is not known. Any thread, from the start of main on.
    static MakeObject Find(REFCLSID classId) noexcept;

private:
    CLSID classId_;
    MakeObject make_;
    const ClassRegistration* next_;
};

}  // namespace Platform

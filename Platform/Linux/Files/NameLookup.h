// Finding files whose names are given in another case than the file system has them.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// The path with each component as the file system spells it: as given where that exists, else the first name in byte
/// order that is the same but for case. From the first component on that exists in no spelling, the text stays as it
/// is. A path that exists as given costs one system call and reads no folder. Any thread.
std::string ExistingNativeSpelling(std::string_view path);

/// The bytes of a path of this system, in its existing spelling, for a name that a caller of the file functions gave.
std::string NativePath(std::wstring_view name);

}  // namespace Platform

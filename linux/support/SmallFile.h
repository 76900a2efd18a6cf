#pragma once

#include <optional>
#include <string>

namespace orrivane {

/// The contents of a regular file of at most a megabyte, also of one whose size the kernel does not
/// tell; absent for anything else, and when not all of it could be read. Never waits for another
/// process.
std::optional<std::string> readSmallFile(const std::string& path);

/// The same for a file that is to be replaced: one that is not there reads as empty, so what is
/// absent must not be written over.
std::optional<std::string> readSmallFileToReplace(const std::string& path);

} // namespace orrivane

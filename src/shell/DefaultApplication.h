#pragma once

/// Which program a desktop opens a file type with, as its file mimeapps.list tells it: for each type the
/// names of desktop entries, of which the first one that exists holds. Where none does, the desktop takes one
/// of the installed applications that say they open the type, of which mimeinfo.cache is the list.

#include <string>
#include <vector>

namespace pictavo {

/// The file's name.
inline constexpr const char* kMimeApps = "mimeapps.list";

/// The desktop entries of a MIME type's default applications, in their order.
std::vector<std::string> DefaultApplications(const std::string& mimeApps, const std::string& type);

/// The desktop entries that a mimeapps.list adds to those that say they open the type.
std::vector<std::string> AddedApplications(const std::string& mimeApps, const std::string& type);

/// The desktop entries that a mimeapps.list takes away from them.
std::vector<std::string> RemovedApplications(const std::string& mimeApps, const std::string& type);

/// The desktop entries that say they open the type, by a mimeinfo.cache.
std::vector<std::string> InstalledApplications(const std::string& mimeInfo, const std::string& type);

/// `mimeApps` with `entry` as the first default application of `type`; those that stood there stay behind it.
std::string WithDefaultApplication(const std::string& mimeApps, const std::string& type,
                                   const std::string& entry);

/// `mimeApps` without `entry` among the default applications of `type`.
std::string WithoutDefaultApplication(const std::string& mimeApps, const std::string& type,
                                      const std::string& entry);

}  // namespace pictavo

#pragma once

#include <QFileDevice>
#include <QString>

namespace tarnwick {

/// What users other than the owner may do with a file or a folder.
inline constexpr QFileDevice::Permissions othersAccess = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                                         QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                                         QFileDevice::WriteOther | QFileDevice::ExeOther;

/// Makes the folder and those above it that are missing, each for its owner alone whatever the umask, and takes other
/// users' access to it away where it was there before. Call while no other thread makes files. False when there is no
/// such folder afterwards.
bool makePrivateFolder(const QString& folder);

/// Whether the path is a regular file, or a link to one that the owner of the path's folder has made to a file of his
/// own. What another user has linked is none, and neither is a link to nothing. Any thread.
[[nodiscard]] bool isOwnFile(const QString& path);

/// Waits until what was written to an open file is on the disk. False when the disk did not take it: some file systems,
/// such as network homes with a quota, say so only then. Any thread.
[[nodiscard]] bool reachesDisk(int descriptor);

} // namespace tarnwick

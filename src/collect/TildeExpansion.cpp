#include "TildeExpansion.h"

#include <QFile>

#include <cerrno>
#include <optional>
#include <vector>

#include <pwd.h>

namespace tarnwick {

namespace {

std::optional<QString> homeFolderOf(const QString& user) {
    const QByteArray name = QFile::encodeName(user);
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    while (::getpwnam_r(name.constData(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found == nullptr ? std::nullopt : std::optional(QFile::decodeName(found->pw_dir));
}

} // namespace

QString expandingTilde(const QString& path, const QString& homeFolder) {
    if (!path.startsWith(u'~'))
        return path;
    const qsizetype slash = path.indexOf(u'/');
    const qsizetype end = slash < 0 ? path.size() : slash;
    const QString user = path.sliced(1, end - 1);
    const std::optional<QString> home = user.isEmpty() ? homeFolder : homeFolderOf(user);
    return home ? *home + path.sliced(end) : path;
}

} // namespace tarnwick

#include "LinuxMachine.h"

#include "KernelFiles.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick::LinuxMachine {

namespace {

/// What firmware contains where its maker filled nothing in; in lower case.
constexpr std::array placeholders{
    "to be filled by o.e.m.",
    "system product name",
    "system version",
    "default string",
    "not applicable",
    "not specified",
    "product name",
    "o.e.m.",
    "unknown",
    "unknown product",
    "none",
    "n/a",
    "invalid",
    "empty",
    "x.x",
};

/// An entry of the firmware's table; empty when its maker filled nothing in.
QByteArray firmwareText(const QString& root, const QString& entry) {
    QByteArray text = readSmallFile(root + u"sys/class/dmi/id/"_s + entry);
    const QByteArray lowercased = text.toLower();
    const bool isPlaceholder = std::any_of(placeholders.begin(), placeholders.end(),
                                           [&](const char* placeholder) { return lowercased == placeholder; });
    return isPlaceholder ? QByteArray() : text;
}

/// Apple's families by the letters of an identifier, "MacBookPro" of "MacBookPro15,1".
constexpr std::array appleFamilies{
    std::pair{"MacBookPro", "MacBook Pro"},
    std::pair{"MacBookAir", "MacBook Air"},
    std::pair{"MacBook", "MacBook"},
    std::pair{"Macmini", "Mac mini"},
    std::pair{"MacPro", "Mac Pro"},
    std::pair{"iMacPro", "iMac Pro"},
    std::pair{"iMac", "iMac"},
};

/// "Docker Container"; empty when this is none that is known.
QByteArray containerName(const QString& root) {
    if (QFile::exists(root + u".dockerenv"_s))
        return "Docker Container";
    if (QFile::exists(root + u"run/.containerenv"_s))
        return "Podman Container";
    const QByteArray kind = readSmallFile(root + u"run/systemd/container"_s);
    return kind.isEmpty() ? QByteArray() : (kind == "lxc" ? kind.toUpper() : kind) + " Container";
}

} // namespace

QByteArray modelIdentifier(const QString& root) {
    for (const QString& entry : {u"product_name"_s, u"board_name"_s}) {
        QByteArray text = firmwareText(root, entry);
        if (!text.isEmpty())
            return text;
    }
    const QByteArrayList model = deviceTreeTexts(root, u"model"_s);
    if (!model.isEmpty())
        return model.first();
    QByteArray container = containerName(root);
    return container.isEmpty() ? architecture(root) : container;
}

QString makersModelName(const QString& root) {
    const QByteArray maker = firmwareText(root, u"sys_vendor"_s).toUpper();
    const QByteArray identifier = modelIdentifier(root);
    if (maker.startsWith("APPLE")) {
        const auto digit =
            std::find_if(identifier.begin(), identifier.end(), [](char c) { return c >= '0' && c <= '9'; });
        const QByteArray letters = identifier.first(digit - identifier.begin());
        const auto family = std::find_if(appleFamilies.begin(), appleFamilies.end(),
                                         [&](const auto& each) { return letters == each.first; });
        return QString::fromUtf8(family == appleFamilies.end() ? identifier : QByteArray(family->second));
    }
    const QByteArray name = maker.startsWith("LENOVO") ? firmwareText(root, u"product_version"_s) : QByteArray();
    return QString::fromUtf8(name.isEmpty() ? identifier : name);
}

} // namespace tarnwick::LinuxMachine

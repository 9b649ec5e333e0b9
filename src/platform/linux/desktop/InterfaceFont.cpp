#include "InterfaceFont.h"

#include <QFontDatabase>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace tarnwick {

InterfaceFont::InterfaceFont(const SessionBus& bus, QObject* parent)
    : QObject(parent), name_(bus, u"org.gnome.desktop.interface"_s, u"font-name"_s) {
    const QString family = QGuiApplication::font().family();
    if (family.isEmpty() || family == "Sans"_L1 || family == "Sans Serif"_L1)
        connect(&name_, &DesktopSetting::changed, this, &InterfaceFont::apply);
}

void InterfaceFont::apply() {
    // A family, and then its style and its size, in words: "Noto Sans Semi-Bold 10".
    QStringList words = name_.value().toString().split(u' ', Qt::SkipEmptyParts);
    while (!words.isEmpty() && !QFontDatabase::hasFamily(words.join(u' ')))
        words.removeLast();
    if (words.isEmpty())
        return;
    QFont font = QGuiApplication::font();
    font.setFamily(words.join(u' '));
    QGuiApplication::setFont(font);
}

} // namespace tarnwick

#include "FloatingStatusItem.h"

#include "StatusItemIcon.h"
#include "SymbolImage.h"
#include "X11Session.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>
#include <QStyleHints>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
constexpr int stripHeight = 24;
constexpr int iconSide = 16;
constexpr int padding = 8;
constexpr int gap = 6;
constexpr int screenMargin = 8;
/// Qt's X11 support takes a window's type from this property, and numbers the types so. Window managers show docks on
/// every workspace and above other windows. Where Qt does not know the property, the strip is a tool window of one
/// workspace. wlroots compositors would put a dock among the other windows; one that bypasses them stays where it is,
/// and a notification does not take the keyboard.
constexpr auto windowType = "_q_xcb_wm_window_type";
constexpr int dockType = 4;
constexpr int notificationType = 0x800;

QFont font() {
    QFont font = QGuiApplication::font();
    font.setPixelSize(12);
    font.setWeight(QFont::Medium);
    return font;
}
} // namespace

class FloatingStatusItem::Strip : public QRasterWindow {
public:
    Strip(FloatingStatusItem& owner, const ColorScheme& colors);
    void setContent(const StatusItemContent& content);

private:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void followPrimaryScreen();
    void fit();
    void placeInCorner();

    FloatingStatusItem& owner_;
    const ColorScheme& colors_;
    StatusItemContent content_;
    QString text_;
    QPoint pressed_; ///< in the window
    bool dragged_ = false;
};

FloatingStatusItem::Strip::Strip(FloatingStatusItem& owner, const ColorScheme& colors)
    : owner_(owner), colors_(colors) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    const bool isBypassing = X11Session::windowManager() == X11Session::WindowManager::wlroots;
    setFlag(Qt::X11BypassWindowManagerHint, isBypassing);
    setProperty(windowType, isBypassing ? notificationType : dockType);
    connect(&colors_, &ColorScheme::changed, this, [this] { update(); });
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &Strip::followPrimaryScreen);
    followPrimaryScreen();
}

void FloatingStatusItem::Strip::followPrimaryScreen() {
    QScreen* const screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    setScreen(screen);
    connect(screen, &QScreen::availableGeometryChanged, this, &Strip::placeInCorner, Qt::UniqueConnection);
    placeInCorner();
}

void FloatingStatusItem::Strip::setContent(const StatusItemContent& content) {
    if (content == content_ && isVisible())
        return;
    content_ = content;
    text_ = content.title.trimmed();
    setTitle(text_.isEmpty() ? content.description : text_);
    fit();
    update();
    if (!isVisible())
        show();
    // Without a window manager nothing else keeps it in front of newer windows; only X11 lets windows do this.
    if (QGuiApplication::platformName() == "xcb"_L1)
        raise();
}

void FloatingStatusItem::Strip::fit() {
    // As wide as the widest text of this shape, so that the strip does not jump with each digit.
    const qreal textWidth = text_.isEmpty() ? 0 : gap + QFontMetricsF(font()).horizontalAdvance(statusTextGuide(text_));
    const QSize size(2 * padding + iconSide + static_cast<int>(std::ceil(textWidth)), stripHeight);
    if (size == this->size())
        return;
    const int right = x() + width();
    setMinimumSize(size);
    setMaximumSize(size);
    setGeometry(right - size.width(), y(), size.width(), size.height());
}

void FloatingStatusItem::Strip::placeInCorner() {
    const QRect available = screen()->availableGeometry();
    setPosition(available.right() + 1 - screenMargin - width(), available.top() + screenMargin);
}

void FloatingStatusItem::Strip::paintEvent(QPaintEvent* /*event*/) {
    const bool dark = colors_.isDark();
    const QColor ink = dark ? QColor(255, 255, 255, 235) : QColor(0, 0, 0, 224);
    QPainter painter(this);
    const QRect whole(QPoint(), size());
    painter.fillRect(whole, dark ? QColor(0x26272a) : QColor(0xf6f6f7));
    painter.setPen(dark ? QColor(255, 255, 255, 40) : QColor(0, 0, 0, 40));
    painter.drawRect(whole.adjusted(0, 0, -1, -1));
    const int iconPixels = static_cast<int>(std::lround(iconSide * devicePixelRatio()));
    painter.drawImage(QRect(padding, (stripHeight - iconSide) / 2, iconSide, iconSide),
                      SymbolImage::render(content_.symbolName, iconPixels, ink));
    painter.setFont(font());
    painter.setPen(ink);
    painter.drawText(whole.adjusted(padding + iconSide + gap, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine, text_);
}

void FloatingStatusItem::Strip::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->position().toPoint();
    dragged_ = false;
}

void FloatingStatusItem::Strip::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton))
        return;
    const QPoint moved = event->position().toPoint() - pressed_;
    if (!dragged_ && moved.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
        return;
    dragged_ = true;
    setPosition(position() + moved);
}

void FloatingStatusItem::Strip::mouseReleaseEvent(QMouseEvent* event) {
    const bool inside = QRect(QPoint(), size()).contains(event->position().toPoint());
    const bool button = event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
    // The strip's middle, because the popover belongs to the whole strip.
    if (button && inside && !dragged_)
        Q_EMIT owner_.clicked(geometry().center());
}

bool FloatingStatusItem::isPossible() {
    return !QGuiApplication::platformName().startsWith("wayland"_L1);
}

FloatingStatusItem::FloatingStatusItem(const ColorScheme& colors, QObject* parent)
    : StatusItem(parent), strip_(std::make_unique<Strip>(*this, colors)) {}

FloatingStatusItem::~FloatingStatusItem() = default;

void FloatingStatusItem::setContent(const StatusItemContent& content) {
    strip_->setContent(content);
}

} // namespace tarnwick

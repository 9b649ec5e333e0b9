#include "PopoverView.h"

#include <QKeyEvent>
#include <QQuickItem>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

PopoverView::PopoverView(ServerStore& store, UIState& ui, ViewCollaborators collaborators)
    : model_(store, ui, std::move(collaborators)) {
    connect(&model_, &PopoverModel::closeRequested, this, &PopoverView::closeRequested);
    setColor(Qt::transparent);
    setResizeMode(SizeViewToRootObject);
    loadView(*this, u"MenuBarView"_s,
             {{u"popover"_s, QVariant::fromValue(&model_)}, {u"ui"_s, QVariant::fromValue(&ui)}});
    connect(this, &QWindow::maximumHeightChanged, this, [this](int height) {
        if (rootObject())
            rootObject()->setProperty("longest", height);
    });
}

PopoverView::~PopoverView() {
    setSource({}); // the items must not outlive the model that they show
}

void PopoverView::setRounded(bool rounded) {
    rootObject()->setProperty("rounded", rounded);
}

void PopoverView::keyPressEvent(QKeyEvent* event) {
    // The card that had the keyboard may be gone.
    if (!activeFocusItem() || activeFocusItem() == contentItem())
        rootObject()->forceActiveFocus();
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
        orderCards();
    QQuickView::keyPressEvent(event);
    // Also when nothing has the focus, as after a menu has closed.
    if (event->key() == Qt::Key_Escape && (!activeFocusItem() || !event->isAccepted()))
        model_.close();
}

void PopoverView::orderCards() {
    const auto* list = rootObject()->findChild<QQuickItem*>(u"serverList"_s);
    QList<QQuickItem*> cards = list->property("contentItem").value<QQuickItem*>()->childItems();
    std::ranges::stable_sort(cards, {}, [](const QQuickItem* card) { return card->property("index").toInt(); });
    for (qsizetype card = 1; card < cards.size(); ++card)
        cards[card]->stackAfter(cards[card - 1]);
}

} // namespace tarnwick

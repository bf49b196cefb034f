#include "buttonrowlayout.h"

#include <QWidget>

#include <algorithm>

ButtonRowLayout::~ButtonRowLayout()
{
    while (QLayoutItem *item = takeAt(0))
        delete item;
}

QLayoutItem *ButtonRowLayout::takeAt(int index)
{
    return index >= 0 && index < count() ? m_items.takeAt(index) : nullptr;
}

QList<QLayoutItem *> ButtonRowLayout::shownItems() const
{
    QList<QLayoutItem *> shown;
    for (QLayoutItem *item : m_items)
        if (!item->isEmpty())
            shown.append(item);
    return shown;
}

bool ButtonRowLayout::fitsSideBySide(int width) const
{
    const QList<QLayoutItem *> shown = shownItems();
    if (shown.size() < 2)
        return true;
    const QMargins m = contentsMargins();
    const int n = static_cast<int>(shown.size());
    const int share = (width - m.left() - m.right() - spacing() * (n - 1)) / n;
    return std::all_of(shown.begin(), shown.end(),
                       [share](QLayoutItem *item) { return item->sizeHint().width() <= share; });
}

QSize ButtonRowLayout::sizeHint() const
{
    const QList<QLayoutItem *> shown = shownItems();
    int widest = 0;
    int tallest = 0;
    for (QLayoutItem *item : shown) {
        widest = std::max(widest, item->sizeHint().width());
        tallest = std::max(tallest, item->sizeHint().height());
    }
    const int n = static_cast<int>(shown.size());
    const QMargins m = contentsMargins();
    return {n * widest + spacing() * std::max(0, n - 1) + m.left() + m.right(),
            tallest + m.top() + m.bottom()};
}

QSize ButtonRowLayout::minimumSize() const
{
    // Stacked, the row is as narrow as its widest label allows.
    int widest = 0;
    for (QLayoutItem *item : shownItems())
        widest = std::max(widest, item->minimumSize().width());
    const QMargins m = contentsMargins();
    return {widest + m.left() + m.right(), heightForWidth(0)};
}

int ButtonRowLayout::heightForWidth(int width) const
{
    const QList<QLayoutItem *> shown = shownItems();
    const bool row = fitsSideBySide(width);
    int height = 0;
    for (QLayoutItem *item : shown)
        height =
            row ? std::max(height, item->sizeHint().height()) : height + item->sizeHint().height();
    if (!row && !shown.isEmpty())
        height += spacing() * static_cast<int>(shown.size() - 1);
    const QMargins m = contentsMargins();
    return height + m.top() + m.bottom();
}

void ButtonRowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    const QRect area = rect.marginsRemoved(contentsMargins());
    const QList<QLayoutItem *> shown = shownItems();
    if (shown.isEmpty())
        return;
    if (fitsSideBySide(rect.width())) {
        const int n = static_cast<int>(shown.size());
        const int share = (area.width() - spacing() * (n - 1)) / n;
        int x = area.left();
        for (int i = 0; i < n; ++i) {
            // The last one takes the pixels the division left over.
            const int w = i + 1 == n ? area.right() + 1 - x : share;
            shown[i]->setGeometry(QRect(x, area.top(), w, shown[i]->sizeHint().height()));
            x += w + spacing();
        }
        return;
    }
    int y = area.top();
    for (QLayoutItem *item : shown) {
        const int h = item->sizeHint().height();
        item->setGeometry(QRect(area.left(), y, area.width(), h));
        y += h + spacing();
    }
}

#pragma once

#include <QLayout>
#include <QList>

// Buttons side by side in equal widths while each one gets the room its label needs, one
// above the other at full width when not: a label is never cut, whatever the language and
// however narrow the card. Hidden buttons take no room. Its height follows its width, so the
// card grows by a row when the buttons stack.
class ButtonRowLayout final : public QLayout
{
public:
    explicit ButtonRowLayout(int spacing = 8) { setSpacing(spacing); }
    ~ButtonRowLayout() override;

    void addItem(QLayoutItem *item) override { m_items.append(item); }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect &rect) override;

    // Whether the shown buttons sit side by side at this width (contents margins included).
    bool fitsSideBySide(int width) const;

private:
    QList<QLayoutItem *> shownItems() const;

    QList<QLayoutItem *> m_items;
};

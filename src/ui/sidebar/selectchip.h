#pragma once

#include <QAbstractButton>
#include <QColor>

// A selectable chip or row: prefix chips, screen profiles, convert formats, languages, widths
// and the settings rail. It only shows whether it is the current choice; the owner decides
// what a click does and calls setSelected from the session's value, never from the click.
class SelectChip final : public QAbstractButton
{
    Q_OBJECT
public:
    enum class Look {
        chip, // short label, accent text when selected, dimmed otherwise
        row,  // symbol, title and optional help line; accent fill and outline when selected
        rail, // symbol and title; white fill and outline when selected
    };

    SelectChip(Look look, const QString &text, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol);
    void setHelpText(const QString &help);
    QString helpText() const { return m_help; }
    void setSelected(bool selected);
    bool isSelected() const { return m_selected; }
    // The selection colour (the accent unless told otherwise).
    void setAccent(const QColor &accent);
    void setTextFont(const QFont &font);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return m_look == Look::row; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int textLeft() const;

    Look m_look;
    QString m_symbol;
    QString m_help;
    QColor m_accent;
    bool m_selected = false;
    bool m_hover = false;
};

#pragma once

#include <QAbstractButton>
#include <QProgressBar>

// A target format the operator can pick: a full-width row that shows whether it is the
// session's current format. The owner sets the selection from the session, never from the
// click itself.
class FormatChip final : public QAbstractButton
{
    Q_OBJECT
public:
    explicit FormatChip(const QString &text, QWidget *parent = nullptr);
    // A short help under the name (the HAP cards say what each is for); it wraps in narrow
    // sheets and long languages, and the chip grows to hold it.
    void setHelp(const QString &help);
    QString help() const { return m_help; }
    void setSelected(bool selected);
    bool isSelected() const { return m_selected; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }
    bool hasHeightForWidth() const override { return !m_help.isEmpty(); }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int helpHeight(int labelWidth) const;

    QString m_help;
    bool m_selected = false;
    bool m_hover = false;
};

// The batch's progress as a thin accent capsule on a faint track. The value runs 0 to
// kSteps, so that a fraction of a clip still moves the bar.
class ConvertProgressBar final : public QProgressBar
{
    Q_OBJECT
public:
    static constexpr int kSteps = 1000;
    explicit ConvertProgressBar(QWidget *parent = nullptr);
    void setFraction(double fraction); // 0 to 1; anything outside is clamped
    double fraction() const { return double(value()) / kSteps; }
    QSize sizeHint() const override { return {200, 8}; }
    QSize minimumSizeHint() const override { return {40, 8}; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

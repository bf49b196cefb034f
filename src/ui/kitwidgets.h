#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QLabel>
#include <QVariantAnimation>
#include <QWidget>

#include <functional>

class RoundIconButton;

// Small pieces of the style kit that hold text. None of them holds application state: they are
// given their texts and call back.

// A card's opening row: the symbol on a tinted rounded square, then the title; the tooltip
// covers the whole row.
class SectionHeader final : public QWidget
{
    Q_OBJECT
public:
    SectionHeader(const QString &symbol, const QString &title, const QString &tooltip,
                  QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
    QString m_title;
};

// A dismissible tip: bulb, wrapping text, a round close button. Leaves with a fade and a
// slide, then calls `onDismiss`.
class HintBanner final : public QWidget
{
    Q_OBJECT
public:
    HintBanner(const QString &text, const QString &dismissTitle, std::function<void()> onDismiss,
               QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void dismiss();
    std::function<void()> m_onDismiss;
    QVariantAnimation m_leave;
    qreal m_opacity = 1.0;
};

// A metric tile: optional symbol and title above a large value in the accent colour.
class BentoMetric final : public QWidget
{
    Q_OBJECT
public:
    BentoMetric(const QString &title, const QString &value, const QColor &accent,
                const QString &symbol = {}, QWidget *parent = nullptr);
    void setValue(const QString &value, const QColor &accent);
    QSize sizeHint() const override { return {96, 68}; }
    QSize minimumSizeHint() const override { return {64, 68}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_title;
    QString m_value;
    QColor m_accent;
    QString m_symbol;
};

// An accent-tinted switch whose knob slides on the snappy spring.
class ToggleSwitch final : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ToggleSwitch(QWidget *parent = nullptr);
    QSize sizeHint() const override { return {40, 24}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVariantAnimation m_slide;
    qreal m_position = 0; // 0 off, 1 on
};

// A titled switch row. The switch is the only control; the row reports its changes.
class BentoToggleRow final : public QWidget
{
    Q_OBJECT
public:
    BentoToggleRow(const QString &title, const QString &subtitle, bool on,
                   QWidget *parent = nullptr);
    ToggleSwitch *toggle() const { return m_switch; }

Q_SIGNALS:
    void toggled(bool on);

private:
    ToggleSwitch *m_switch;
};

// A quiet tile for equal-height grids: fills the width, at least `minHeight` high.
class EqualTile final : public QWidget
{
    Q_OBJECT
public:
    explicit EqualTile(int minHeight, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

// A capsule label tinted with one colour (the header's warn and fail counts).
class Pill final : public QWidget
{
    Q_OBJECT
public:
    Pill(const QColor &color, QWidget *parent = nullptr);
    void setText(const QString &text);
    QString text() const { return m_text; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
    QString m_text;
};

#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QVariantAnimation>

// The kit's buttons. Each paints itself and settles into a slightly smaller scale while held,
// on the snappy spring, so a press is felt without moving the layout.
class KitButton : public QAbstractButton
{
    Q_OBJECT
public:
    enum class Kind { primary, ghost, ghostCompact };
    KitButton(Kind kind, const QString &symbol, const QString &text, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void pressTo(qreal scale);

    Kind m_kind;
    QString m_symbol;
    qreal m_scale = 1.0;
    bool m_hover = false;
    QVariantAnimation m_press;
};

// A round button holding one symbol (close, play, restart, clear).
class RoundIconButton : public QAbstractButton
{
    Q_OBJECT
public:
    RoundIconButton(const QString &symbol, int diameter, int symbolPx, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol);
    void setColors(const QColor &fill, const QColor &symbolColor, const QColor &outline = {});
    QSize sizeHint() const override { return {m_diameter, m_diameter}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QString m_symbol;
    int m_diameter;
    int m_symbolPx;
    QColor m_fill;
    QColor m_symbolColor;
    QColor m_outline;
    bool m_hover = false;
};

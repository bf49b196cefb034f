#include "motion.h"

#include <QGraphicsOpacityEffect>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QWidget>

namespace Motion {

namespace {
bool g_instant = false;
constexpr int kSlidePx = 24;

QGraphicsOpacityEffect *opacityOf(QWidget *widget)
{
    auto *effect = qobject_cast<QGraphicsOpacityEffect *>(widget->graphicsEffect());
    if (!effect) {
        effect = new QGraphicsOpacityEffect(widget);
        widget->setGraphicsEffect(effect);
    }
    return effect;
}
// A new motion replaces the one running: a leave that ends later must not hide a view that
// has since come back. Stopping deletes them (DeleteWhenStopped) without their finish.
void stopRunning(QWidget *widget)
{
    const auto running = widget->findChildren<QAbstractAnimation *>(QStringLiteral("motion"),
                                                                    Qt::FindDirectChildrenOnly);
    for (QAbstractAnimation *animation : running)
        animation->stop();
}
} // namespace

void setInstant(bool instant)
{
    g_instant = instant;
}
bool isInstant()
{
    return g_instant;
}

void enter(QWidget *widget, Entrance entrance, AppTheme::Spring spring)
{
    stopRunning(widget);
    widget->show();
    if (g_instant) {
        widget->setGraphicsEffect(nullptr);
        return;
    }
    auto *group = new QParallelAnimationGroup(widget);
    group->setObjectName(QStringLiteral("motion"));
    auto *fade = new QPropertyAnimation(opacityOf(widget), "opacity", group);
    fade->setStartValue(0.0);
    fade->setEndValue(1.0);
    // Opacity only fades; the spring's overshoot would flash.
    fade->setDuration(AppTheme::springDurationMs(spring) / 2);
    fade->setEasingCurve(QEasingCurve::OutCubic);
    if (entrance == Entrance::fadeSlideUp) {
        auto *slide = new QPropertyAnimation(widget, "pos", group);
        const QPoint end = widget->pos();
        slide->setStartValue(end + QPoint(0, kSlidePx));
        slide->setEndValue(end);
        slide->setDuration(AppTheme::springDurationMs(spring));
        slide->setEasingCurve(AppTheme::springCurve(spring));
    }
    QObject::connect(group, &QAbstractAnimation::finished, widget,
                     [widget] { widget->setGraphicsEffect(nullptr); });
    group->start(QAbstractAnimation::DeleteWhenStopped);
}

void leave(QWidget *widget, AppTheme::Spring spring)
{
    stopRunning(widget);
    if (g_instant || !widget->isVisible()) {
        widget->hide();
        widget->setGraphicsEffect(nullptr);
        return;
    }
    auto *fade = new QPropertyAnimation(opacityOf(widget), "opacity", widget);
    fade->setObjectName(QStringLiteral("motion"));
    fade->setStartValue(1.0);
    fade->setEndValue(0.0);
    fade->setDuration(AppTheme::springDurationMs(spring) / 3);
    QObject::connect(fade, &QAbstractAnimation::finished, widget, [widget] {
        widget->hide();
        widget->setGraphicsEffect(nullptr);
    });
    fade->start(QAbstractAnimation::DeleteWhenStopped);
}

} // namespace Motion

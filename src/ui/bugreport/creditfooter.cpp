#include "creditfooter.h"

#include "session/platform.h"
#include "ui/apptheme.h"

#include <QPainter>

CreditFooter::CreditFooter(const QString &designedBy, Desktop &desktop, QWidget *parent)
    : QAbstractButton(parent)
{
    // A full-width colon (设计：) carries its own space; a second one would open a gap.
    setText(designedBy + (designedBy.endsWith(u'\uFF1A') ? QString() : QStringLiteral(" ")) +
            maker());
    setToolTip(site().host());
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setFont(AppTheme::font(10, QFont::Medium, AppTheme::Face::rounded));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [&desktop] {
        if (site().isValid())
            desktop.openUrl(site());
    });
}

QUrl CreditFooter::site()
{
    return QUrl(QStringLiteral(CUEBOX_WEBSITE));
}

QString CreditFooter::maker()
{
    return QStringLiteral(CUEBOX_MAKER);
}

QSize CreditFooter::sizeHint() const
{
    const QFontMetrics fm(font());
    return {fm.horizontalAdvance(text()) + 24, fm.height() + 16};
}

void CreditFooter::enterEvent(QEnterEvent *event)
{
    m_hover = true;
    update();
    QAbstractButton::enterEvent(event);
}

void CreditFooter::leaveEvent(QEvent *event)
{
    m_hover = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void CreditFooter::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setFont(font());
    p.setPen(AppTheme::white(m_hover ? 0.55 : 0.32));
    p.drawText(rect(), Qt::AlignCenter, text());
}

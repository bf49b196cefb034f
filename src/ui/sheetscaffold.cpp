#include "sheetscaffold.h"

#include "apptheme.h"
#include "kitbuttons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

SheetScaffold::SheetScaffold(const QString &title, const QString &subtitle,
                             std::function<void()> onClose, QWidget *parent)
    : QWidget(parent), m_layout(new QVBoxLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    auto *header = new QHBoxLayout;
    header->setContentsMargins(20, 16, 20, 16);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    auto *titleLabel = new QLabel(title);
    titleLabel->setObjectName(QStringLiteral("sheetTitle"));
    titleLabel->setFont(AppTheme::font(22, QFont::DemiBold, AppTheme::Face::rounded));
    texts->addWidget(titleLabel);
    if (!subtitle.isEmpty()) {
        auto *sub = new QLabel(subtitle);
        sub->setWordWrap(true); // a narrow sheet's subtitle takes a second line
        sub->setFont(AppTheme::font(13));
        QPalette pal = sub->palette();
        pal.setColor(QPalette::WindowText, AppTheme::white(0.48));
        sub->setPalette(pal);
        texts->addWidget(sub);
    }
    header->addLayout(texts, 1);
    if (onClose) {
        auto *close = new RoundIconButton(QStringLiteral("xmark"), 30, 10);
        close->setColors(AppTheme::white(0.08), AppTheme::white(0.7), AppTheme::white(0.1));
        connect(close, &QAbstractButton::clicked, this, std::move(onClose));
        header->addWidget(close, 0, Qt::AlignTop);
    }
    m_layout->addLayout(header);
}

void SheetScaffold::setContent(QWidget *content)
{
    if (m_content)
        m_content->deleteLater();
    m_content = content;
    m_layout->addWidget(content, 1);
}

void SheetScaffold::paintEvent(QPaintEvent *)
{
    if (m_opaque)
        QPainter(this).fillRect(rect(), AppTheme::ink);
}

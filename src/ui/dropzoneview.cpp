#include "dropzoneview.h"

#include "apptheme.h"
#include "kitbuttons.h"
#include "session/packviewmodel.h"
#include "symbols.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QRadialGradient>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr int kMaxWidth = 560;
constexpr int kPadding = 48;

// The film icon over its green glow; it breathes (scale 1.0 ↔ 1.05, 2.4 s each way) while shown.
class BreathingFilm final : public QWidget
{
public:
    explicit BreathingFilm(QWidget *parent = nullptr) : QWidget(parent)
    {
        setFixedSize(180, 150);
        m_breath.setStartValue(1.0);
        m_breath.setEndValue(1.05);
        m_breath.setDuration(2400);
        m_breath.setEasingCurve(QEasingCurve::InOutSine);
        m_breath.setLoopCount(-1);
        QObject::connect(&m_breath, &QVariantAnimation::currentLoopChanged, this, [this](int l) {
            m_breath.setDirection(l % 2 ? QAbstractAnimation::Backward
                                        : QAbstractAnimation::Forward);
        });
        QObject::connect(&m_breath, &QVariantAnimation::valueChanged, this,
                         [this](const QVariant &v) {
                             // The icon grows by little more than two pixels: a quarter pixel
                             // per repaint is smooth, and far fewer repaints than one a frame.
                             const qreal scale = std::round(v.toReal() * 46 * 4) / (46 * 4);
                             if (scale == m_scale)
                                 return;
                             m_scale = scale;
                             update();
                         });
    }
    void setFrozen(bool frozen)
    {
        m_frozen = frozen;
        frozen ? m_breath.stop() : (isVisible() ? m_breath.start() : void());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QPointF c = QRectF(rect()).center();
        if (m_glow.size() != size()) { // a radial fill per frame is the costly part: once
            QImage glowImage(size(), QImage::Format_ARGB32_Premultiplied);
            glowImage.fill(Qt::transparent);
            QPainter g(&glowImage);
            QRadialGradient glow(c, 90);
            glow.setColorAt(0.05, AppTheme::withAlpha(AppTheme::accentGreen, 0.4 * 0.55));
            glow.setColorAt(0.5, AppTheme::withAlpha(AppTheme::accentGreen, 0.12 * 0.5));
            glow.setColorAt(1, AppTheme::withAlpha(AppTheme::accentGreen, 0));
            g.fillRect(glowImage.rect(), glow);
            g.end();
            m_glow = QPixmap::fromImage(glowImage);
        }
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.drawPixmap(0, 0, m_glow);
        const qreal side = 46 * m_scale;
        Symbols::paint(&p, QStringLiteral("film.stack"), AppTheme::accentGreen,
                       QRectF(c.x() - side / 2, c.y() - side / 2, side, side));
    }
    void showEvent(QShowEvent *) override
    {
        if (!m_frozen)
            m_breath.start();
    }
    void hideEvent(QHideEvent *) override { m_breath.stop(); }

private:
    QVariantAnimation m_breath;
    QPixmap m_glow;
    qreal m_scale = 1.0;
    bool m_frozen = false;
};

QLabel *label(const QString &text, const QFont &font, const QColor &color)
{
    auto *l = new QLabel(text);
    l->setFont(font);
    l->setAlignment(Qt::AlignCenter);
    l->setWordWrap(true);
    QPalette pal = l->palette();
    pal.setColor(QPalette::WindowText, color);
    l->setPalette(pal);
    return l;
}

} // namespace

DropZoneView::DropZoneView(const UiContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_card(new QWidget(this)), m_glow(new BreathingFilm)
{
    setObjectName(QStringLiteral("dropZone"));
    setAcceptDrops(true);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    outer->addStretch(1);
    auto *centre = new QHBoxLayout;
    centre->addStretch(1);
    m_card->setMaximumWidth(kMaxWidth);
    m_card->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    centre->addWidget(m_card, 100);
    centre->addStretch(1);
    outer->addLayout(centre);
    outer->addStretch(1);

    auto *column = new QVBoxLayout(m_card);
    column->setContentsMargins(36, 28, 36, 36);
    column->setSpacing(10);
    column->addWidget(m_glow, 0, Qt::AlignHCenter);
    m_title =
        label(m_context.text(u"drop.title"),
              AppTheme::font(28, QFont::DemiBold, AppTheme::Face::rounded), AppTheme::white(0.95));
    // One line, shrunk to fit: a title that wraps leaves a lone syllable on its second line.
    m_title->setWordWrap(false);
    m_title->setMinimumWidth(1);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    column->addWidget(m_title);
    QLabel *subtitle =
        label(m_context.text(u"drop.subtitle"), AppTheme::font(13), AppTheme::white(0.58));
    subtitle->setTextFormat(Qt::RichText);
    // Rich text for the line spacing the design asks for; the tables' line break stays a break.
    subtitle->setText(QStringLiteral("<div style=\"line-height:130%\">%1</div>")
                          .arg(m_context.text(u"drop.subtitle")
                                   .toHtmlEscaped()
                                   .replace(u'\n', QStringLiteral("<br>"))));
    column->addWidget(subtitle);
    column->addSpacing(14);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    m_open = new KitButton(KitButton::Kind::primary, QStringLiteral("folder.badge.plus"),
                           m_context.text(u"drop.open"));
    m_open->setToolTip(m_context.text(u"toolbar.open.help"));
    m_clear = new KitButton(KitButton::Kind::ghost, QStringLiteral("trash"),
                            m_context.text(u"drop.clear"));
    m_clear->setToolTip(m_context.text(u"toolbar.clear.help"));
    for (KitButton *b : {m_open, m_clear}) {
        b->setFixedWidth(std::max(168, b->sizeHint().width()));
        buttons->addWidget(b);
    }
    column->addLayout(buttons);
    column->setAlignment(buttons, Qt::AlignHCenter);

    PackViewModel &vm = m_context.viewModel;
    connect(m_open, &QAbstractButton::clicked, &vm, [&vm] { vm.pickFolder(); });
    connect(m_clear, &QAbstractButton::clicked, &vm, [&vm] { vm.clear(); });
    connect(&vm, &PackViewModel::clipsChanged, this, &DropZoneView::updateClear);
    updateClear();

    m_scaleAnimation.setEasingCurve(AppTheme::springCurve(AppTheme::Spring::soft));
    m_scaleAnimation.setDuration(AppTheme::springDurationMs(AppTheme::Spring::soft));
    connect(&m_scaleAnimation, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_scale = v.toReal();
        update();
    });
}

void DropZoneView::updateClear()
{
    m_clear->setEnabled(!m_context.viewModel.clips().isEmpty());
}

void DropZoneView::setFrozen(bool frozen)
{
    static_cast<BreathingFilm *>(m_glow)->setFrozen(frozen);
    if (frozen) {
        m_scaleAnimation.stop();
        m_appeared = true;
        m_scale = 1.0;
        update();
    }
}

QRectF DropZoneView::cardRect() const
{
    return QRectF(m_card->geometry());
}

void DropZoneView::scaleTo(qreal scale)
{
    m_scaleAnimation.stop();
    m_scaleAnimation.setStartValue(m_scale);
    m_scaleAnimation.setEndValue(scale);
    m_scaleAnimation.start();
}

void DropZoneView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_appeared) {
        m_appeared = true;
        scaleTo(1.0);
    }
}

void DropZoneView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
}

void DropZoneView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    QFont font = AppTheme::font(28, QFont::DemiBold, AppTheme::Face::rounded);
    const int room = std::min(kMaxWidth, width() - 2 * kPadding) - 72;
    while (font.pixelSize() > 18 && QFontMetrics(font).horizontalAdvance(m_title->text()) > room)
        font.setPixelSize(font.pixelSize() - 1);
    m_title->setFont(font);
}

void DropZoneView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF card = cardRect();
    const QPointF c = card.center();
    p.translate(c);
    p.scale(m_scale, m_scale);
    p.translate(-c);
    const QRectF face = card.adjusted(1, 1, -1, -1);
    p.setPen(Qt::NoPen);
    p.setBrush(m_targeted ? AppTheme::withAlpha(AppTheme::accentGreen, 0.07)
                          : AppTheme::withAlpha(AppTheme::panel, 0.55));
    p.drawRoundedRect(face, 28, 28);
    QLinearGradient outline(face.topLeft(), face.bottomRight());
    outline.setColorAt(0, AppTheme::withAlpha(AppTheme::accentGreen, m_targeted ? 0.9 : 0.55));
    outline.setColorAt(1, AppTheme::withAlpha(AppTheme::accentGreenDim, m_targeted ? 0.6 : 0.2));
    QPen pen(QBrush(outline), 2);
    pen.setDashPattern({5, 4}); // in pen widths: dashes of 10 with gaps of 8
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(face, 28, 28);
}

void DropZoneView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!event->mimeData()->hasUrls())
        return;
    event->acceptProposedAction();
    m_targeted = true;
    scaleTo(1.02);
}

void DropZoneView::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void DropZoneView::dragLeaveEvent(QDragLeaveEvent *)
{
    m_targeted = false;
    scaleTo(1.0);
}

void DropZoneView::dropEvent(QDropEvent *event)
{
    m_targeted = false;
    scaleTo(1.0);
    if (!event->mimeData()->hasUrls())
        return;
    m_context.viewModel.handleDrop(event->mimeData()->urls());
    event->acceptProposedAction();
}

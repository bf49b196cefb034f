#include "panelparts.h"

#include "l10n/localizationmanager.h"
#include "ui/apptheme.h"
#include "ui/kitwidgets.h"
#include "ui/symbols.h"

#include <QBoxLayout>
#include <QEvent>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>

#include <array>

namespace PanelParts {

namespace {

class GradientKicker final : public QWidget
{
public:
    GradientKicker(const QString &text, double pixelSize, double letterSpacing)
        : m_font(AppTheme::font(pixelSize, QFont::Bold, AppTheme::Face::rounded))
    {
        setAccessibleName(text);
        m_font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing);
        m_text = text;
        const QFontMetrics fm(m_font);
        setFixedHeight(fm.height());
        setMinimumWidth(fm.horizontalAdvance(m_text) + 4);
    }
    QString text() const { return m_text; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addText(0, QFontMetrics(m_font).ascent(), m_font, m_text);
        QLinearGradient fill(0, 0, std::max<qreal>(1, path.boundingRect().right()), 0);
        fill.setColorAt(0, AppTheme::accentGreen);
        fill.setColorAt(1, AppTheme::accentGreenDim);
        p.fillPath(path, fill);
    }

private:
    QFont m_font;
    QString m_text;
};

// A label that remembers the heights it reported for its last few widths. Layouts ask a
// wrapped label for its height many times over, and the label lays its text out afresh each
// time: when one card's height changes, the sidebar's relayout spent most of its time there.
// Text, width and font make the key; margins and indent are set once, when the label is built.
class MeasuredLabel final : public QLabel
{
public:
    using QLabel::QLabel;

    int heightForWidth(int width) const override
    {
        if (!wordWrap())
            return QLabel::heightForWidth(width);
        const QString shown = text();
        for (const Measure &m : m_measured) {
            if (m.width == width && m.text == shown)
                return m.height;
        }
        const int height = QLabel::heightForWidth(width);
        m_measured[m_next] = {width, shown, height};
        m_next = (m_next + 1) % m_measured.size();
        return height;
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange ||
            event->type() == QEvent::ContentsRectChange)
            m_measured.fill({});
        QLabel::changeEvent(event);
    }

private:
    struct Measure {
        int width = -1;
        QString text;
        int height = 0;
    };
    mutable std::array<Measure, 4> m_measured;
    mutable std::size_t m_next = 0;
};

} // namespace

QWidget *kicker(const QString &text, double pixelSize, double letterSpacing)
{
    return new GradientKicker(text, pixelSize, letterSpacing);
}

void setTextColor(QLabel *label, const QColor &color)
{
    QPalette pal = label->palette();
    pal.setColor(QPalette::WindowText, color);
    label->setPalette(pal);
}

QLabel *colouredLabel(const QString &text, double pixelSize, const QColor &color,
                      QFont::Weight weight)
{
    auto *label = new MeasuredLabel(text);
    label->setFont(AppTheme::font(pixelSize, weight));
    setTextColor(label, color);
    return label;
}

QLabel *label(const QString &text, double pixelSize, double whiteAlpha, QFont::Weight weight)
{
    return colouredLabel(text, pixelSize, AppTheme::white(whiteAlpha), weight);
}

QLabel *symbol(const QString &name, const QColor &color, int sidePx)
{
    auto *label = new QLabel;
    label->setPixmap(Symbols::pixmap(name, color, sidePx, label->devicePixelRatioF()));
    label->setFixedSize(sidePx, sidePx);
    return label;
}

SwitchLine switchLine(const QString &text, bool on)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    auto *toggle = new ToggleSwitch;
    toggle->setChecked(on);
    auto *caption = label(text, 12, 0.85);
    caption->setWordWrap(true);
    layout->addWidget(toggle, 0, Qt::AlignVCenter);
    layout->addWidget(caption, 1);
    return {row, toggle};
}

HintBanner *addHint(QBoxLayout *layout, const UiContext &context, const QString &hintId,
                    const QString &textKey)
{
    LocalizationManager &localization = context.localization;
    if (localization.isHintDismissed(hintId))
        return nullptr;
    auto *banner = new HintBanner(context.text(textKey), context.text(u"hint.dismiss"),
                                  [&localization, hintId] { localization.dismissHint(hintId); });
    banner->setObjectName(hintId);
    layout->addWidget(banner);
    QPointer<HintBanner> guard(banner);
    QObject::connect(&localization, &LocalizationManager::dismissedHintsChanged, banner,
                     [guard, hintId, &localization] {
                         if (guard && localization.isHintDismissed(hintId)) {
                             guard->hide();
                             guard->deleteLater();
                         }
                     });
    return banner;
}

void clear(QLayout *layout)
{
    while (QLayoutItem *item = layout->takeAt(0)) {
        if (QWidget *widget = item->widget()) {
            widget->hide();
            widget->deleteLater();
        } else if (QLayout *inner = item->layout()) {
            clear(inner);
        }
        delete item;
    }
}

} // namespace PanelParts

#include "cliptabledelegate.h"

#include "apptheme.h"
#include "cliptablemodel.h"
#include "clipthumbs.h"
#include "model/arenanamer.h"
#include "statusbadge.h"
#include "studios/renamerowsview.h"
#include "symbols.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

namespace {
constexpr int kCellPadding = 4;
}

ClipTableDelegate::ClipTableDelegate(ClipThumbs &thumbs, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_thumbs(thumbs)
    , m_body(AppTheme::font(12))
    , m_cue(AppTheme::font(12, QFont::Medium, AppTheme::Face::rounded))
    , m_mono(AppTheme::font(12.5, QFont::Normal, AppTheme::Face::mono))
    , m_codec(AppTheme::font(11, QFont::Medium))
    , m_badge(StatusBadgeLook::font())
{}

void ClipTableDelegate::setCompact(bool compact)
{
    m_compact = compact;
}

int ClipTableDelegate::columnWidth(int column, bool compact)
{
    // The design's widths plus the gaps between cells.
    switch (column) {
    case ClipTableModel::HandleColumn:
        return 16 + 8;
    case ClipTableModel::ThumbColumn:
        return (compact ? 36 : 44) + 8;
    case ClipTableModel::CueColumn:
        return 28 + 4;
    case ClipTableModel::HealthColumn:
        return (compact ? 56 : 64) + 28;
    case ClipTableModel::NameColumn:
        return 120;
    case ClipTableModel::OriginalColumn:
        return 140 + 8;
    case ClipTableModel::ResolutionColumn:
        return 84 + 4;
    case ClipTableModel::DurationColumn:
        return 44 + 4;
    case ClipTableModel::FrameRateColumn:
        return 48 + 4;
    case ClipTableModel::CodecColumn:
        return 64 + 4;
    case ClipTableModel::SizeColumn:
        return 64 + 8;
    default:
        return 60;
    }
}

QSize ClipTableDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const
{
    return {columnWidth(index.column(), m_compact), rowHeight()};
}

const QFont &ClipTableDelegate::font(Face face) const
{
    switch (face) {
    case Face::cue:
        return m_cue;
    case Face::mono:
        return m_mono;
    case Face::codec:
        return m_codec;
    case Face::body:
        break;
    }
    return m_body;
}

void ClipTableDelegate::paintText(QPainter *painter, const QRect &cell, const QString &text,
                                  Face face, const QColor &color, Qt::Alignment align) const
{
    const QRect r = cell.adjusted(kCellPadding, 0, -kCellPadding, 0);
    if (r.width() <= 0 || text.isEmpty())
        return;
    const QString key = QChar(u'0' + int(face)) + QString::number(r.width()) + QChar(0x1f) + text;
    const QFont &font = this->font(face);
    QStaticText *laidOut = m_texts.object(key);
    if (!laidOut) {
        laidOut = new QStaticText(QFontMetrics(font).elidedText(text, Qt::ElideRight, r.width()));
        laidOut->setTextFormat(Qt::PlainText); // a name is never markup
        laidOut->setPerformanceHint(QStaticText::AggressiveCaching);
        laidOut->prepare(QTransform(), font);
        m_texts.insert(key, laidOut);
    }
    const QSizeF size = laidOut->size();
    qreal x = r.left();
    if (align & Qt::AlignRight)
        x = r.right() + 1 - size.width();
    else if (align & Qt::AlignHCenter)
        x = r.left() + (r.width() - size.width()) / 2;
    const qreal y = r.top() + (r.height() - size.height()) / 2;
    painter->setFont(font);
    painter->setPen(color);
    painter->drawStaticText(QPointF(x, y), *laidOut);
}

void ClipTableDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    // Row backgrounds (hover, selection) are painted by the view across the whole row.
    const QRect cell = option.rect;
    switch (index.column()) {
    case ClipTableModel::HandleColumn:
        Symbols::paint(painter, QStringLiteral("line.3.horizontal"), AppTheme::white(0.28),
                       QRectF(cell.center().x() - 5.5 + 2, cell.center().y() - 5.5, 11, 11));
        return;
    case ClipTableModel::ThumbColumn:
        paintThumb(painter, cell, index);
        return;
    case ClipTableModel::CueColumn:
        paintText(painter, cell, index.data().toString(), Face::cue, AppTheme::white(0.4));
        return;
    case ClipTableModel::HealthColumn:
        paintHealth(painter, cell, index);
        return;
    case ClipTableModel::NameColumn:
        paintText(painter, cell, index.data().toString(), Face::mono, AppTheme::white(0.92));
        return;
    case ClipTableModel::OriginalColumn:
        paintText(painter, cell, index.data().toString(), Face::body, AppTheme::white(0.4));
        return;
    case ClipTableModel::ResolutionColumn:
    case ClipTableModel::DurationColumn:
    case ClipTableModel::FrameRateColumn:
        paintText(painter, cell, index.data().toString(), Face::body, AppTheme::white(0.8));
        return;
    case ClipTableModel::CodecColumn:
        paintText(painter, cell, index.data().toString(), Face::codec,
                  AppTheme::withAlpha(AppTheme::accentGreen, 0.95));
        return;
    case ClipTableModel::SizeColumn:
        paintText(painter, cell, index.data().toString(), Face::body, AppTheme::white(0.45));
        return;
    default:
        return;
    }
}

void ClipTableDelegate::paintThumb(QPainter *painter, const QRect &cell,
                                   const QModelIndex &index) const
{
    const int side = thumbSide();
    const QPointF topLeft(cell.left() + (cell.width() - side) / 2.0,
                          cell.top() + (cell.height() - side) / 2.0);
    const QImage image = m_thumbs.imageFor(index.data(ClipTableModel::PathRole).toString());
    const bool still = index.data(ClipTableModel::IsImageRole).toBool();
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    // The rounded, cropped and smoothly scaled tile is drawn once per picture and size: rows
    // repaint on every selection, pulse and scroll, and scaling each time was a fifth of it.
    const QString key = QStringLiteral("cuebox.thumb|%1|%2|%3|%4")
                            .arg(side)
                            .arg(dpr)
                            .arg(image.isNull() ? 0 : image.cacheKey())
                            .arg(still ? 1 : 0);
    QPixmap tile;
    if (!QPixmapCache::find(key, &tile)) {
        tile = QPixmap(QSize(side, side) * dpr);
        tile.setDevicePixelRatio(dpr);
        tile.fill(Qt::transparent);
        QPainter p(&tile);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF box(0, 0, side, side);
        QPainterPath rounded;
        rounded.addRoundedRect(box, 8, 8);
        p.fillPath(rounded, AppTheme::white(0.06));
        if (!image.isNull()) {
            // Fill the square and crop the overflow, centred, like an aspect-fill layer.
            const QSizeF scaled =
                QSizeF(image.size()).scaled(box.size(), Qt::KeepAspectRatioByExpanding);
            const QRectF target(box.center().x() - scaled.width() / 2,
                                box.center().y() - scaled.height() / 2, scaled.width(),
                                scaled.height());
            p.setClipPath(rounded);
            p.setRenderHint(QPainter::SmoothPixmapTransform);
            p.drawImage(target, image);
            p.setClipping(false);
        } else {
            Symbols::paint(&p, still ? QStringLiteral("photo") : QStringLiteral("film"),
                           AppTheme::white(0.3),
                           QRectF(box.center().x() - 6, box.center().y() - 6, 12, 12));
        }
        p.setPen(QPen(AppTheme::white(0.1), 1));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
        p.end();
        QPixmapCache::insert(key, tile);
    }
    painter->drawPixmap(topLeft, tile);
}

void ClipTableDelegate::paintHealth(QPainter *painter, const QRect &cell,
                                    const QModelIndex &index) const
{
    const auto health = index.data(ClipTableModel::HealthRole).value<ClipHealth>();
    const QString label = index.data(ClipTableModel::HealthLabelRole).toString();
    const QSize badgeSize = StatusBadgeLook::size(label, m_badge);
    const QRectF badge(cell.left() + kCellPadding, cell.center().y() - badgeSize.height() / 2.0,
                       badgeSize.width(), badgeSize.height());
    StatusBadgeLook::paint(painter, badge, health, label, m_badge,
                           StatusBadgeLook::pulses(health) ? m_glow : 0.0);
    qreal x = badge.right() + 5;
    if (index.data(ClipTableModel::DuplicateRole).toBool()) {
        Symbols::paint(painter, QStringLiteral("doc.on.doc"), AppTheme::warn,
                       QRectF(x, cell.center().y() - 5, 10, 10));
        x += 13;
    }
    const bool audio = index.data(ClipTableModel::HasAudioRole).toBool();
    const QColor tint = audio ? AppTheme::accentGreen : AppTheme::accentGrey;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(tint);
    painter->drawEllipse(QPointF(x + 3, cell.center().y()), 3, 3);
    painter->restore();
    Symbols::paint(painter, audio ? QStringLiteral("waveform") : QStringLiteral("speaker.slash"),
                   tint, QRectF(x + 8, cell.center().y() - 5, 10, 10));
}

QWidget *ClipTableDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                         const QModelIndex &index) const
{
    if (index.column() != ClipTableModel::NameColumn)
        return nullptr;
    auto *editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setFont(m_mono);
    editor->setObjectName(QStringLiteral("arenaNameEditor"));
    const QPersistentModelIndex persistent(index);
    connect(editor, &QLineEdit::textEdited, this, [this, editor, persistent](const QString &typed) {
        if (!persistent.isValid())
            return; // the clip left the pack while its name was being typed: drop the edit
        auto *model = const_cast<QAbstractItemModel *>(persistent.model());
        model->setData(persistent, typed, Qt::EditRole);
        // As in the rename studio: a word break just typed stays as a pending "_", or "Big
        // Drop" typed key by key would lose its space before the "D" arrives.
        const QString shown =
            RenameRowDelegate::shownWhileTyping(typed, persistent.data(Qt::EditRole).toString());
        if (shown == typed)
            return;
        const int fromEnd = static_cast<int>(typed.size()) - editor->cursorPosition();
        editor->setText(shown);
        editor->setCursorPosition(std::max(0, static_cast<int>(shown.size()) - fromEnd));
    });
    return editor;
}

void ClipTableDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *field = qobject_cast<QLineEdit *>(editor);
    if (!field)
        return;
    const QString stored = index.data(Qt::EditRole).toString();
    // A field that already stands for the stored name (perhaps with a pending "_") stays as
    // typed.
    if (!field->text().isEmpty() && ArenaNamer::sanitize(field->text()) == stored)
        return;
    field->setText(stored);
}

void ClipTableDelegate::setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const
{
    // Every keystroke is already in the session.
}

void ClipTableDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                             const QModelIndex &) const
{
    const QRect r = option.rect;
    const int h = 28;
    editor->setGeometry(r.left(), r.center().y() - h / 2 + 1, r.width() - kCellPadding, h);
}

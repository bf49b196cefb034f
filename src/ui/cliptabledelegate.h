#pragma once

#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QStyledItemDelegate>

class ClipThumbs;

// Paints every cell of a clip row (no widget per row) and edits the Arena name in place. Each
// keystroke goes to the session, which sanitizes it; the field then shows the session's answer,
// so it never holds a character the sanitizer removes.
class ClipTableDelegate final : public QStyledItemDelegate
{
    Q_OBJECT
public:
    ClipTableDelegate(ClipThumbs &thumbs, QObject *parent = nullptr);

    void setCompact(bool compact);
    bool isCompact() const { return m_compact; }
    void setGlow(qreal glow) { m_glow = glow; }
    int thumbSide() const { return m_compact ? 36 : 44; }
    int rowHeight() const { return m_compact ? 44 : 54; }
    static int columnWidth(int column, bool compact);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    void paintThumb(QPainter *painter, const QRect &cell, const QModelIndex &index) const;
    void paintHealth(QPainter *painter, const QRect &cell, const QModelIndex &index) const;
    // The fonts cells are set in; the laid-out texts are keyed by this, not by the font's
    // description, which costs more to write out than the cached text saves.
    enum class Face { body, cue, mono, codec };
    const QFont &font(Face face) const;
    void paintText(QPainter *painter, const QRect &cell, const QString &text, Face face,
                   const QColor &color, Qt::Alignment align = Qt::AlignLeft) const;

    ClipThumbs &m_thumbs;
    bool m_compact = false;
    qreal m_glow = 0;
    QFont m_body;
    QFont m_cue;
    QFont m_mono;
    QFont m_codec;
    QFont m_badge;
    // Cell texts elided to their width and laid out once: rows are repainted far more often
    // (selection, pulses, thumbnails arriving, scrolling back) than their texts change.
    mutable QCache<QString, QStaticText> m_texts{4096};
};

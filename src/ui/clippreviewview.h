#pragma once

#include "model/mediaclip.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <optional>

class PreviewPlayer;
class QLabel;
class RoundIconButton;

// The selected clip's picture: a poster (a still's own image, or a movie's frame at 0.4 s)
// and, for a movie, an 8-second muted preview with play/pause and restart. Changing the clip
// tears the player down and loads anew; a poster that arrives for an earlier clip is dropped.
class ClipPreviewView final : public QWidget
{
    Q_OBJECT
public:
    explicit ClipPreviewView(QWidget *parent = nullptr);
    ~ClipPreviewView() override;

    void setClip(const std::optional<MediaClip> &clip);
    void setCompact(bool compact);
    void setDurationLabel(const QString &text);

    bool isPlaying() const { return m_isPlaying; }
    bool hasPoster() const { return !m_poster.isNull(); }
    int generation() const { return m_generation; }
    // The panel shows a frame of the running preview (not only the poster).
    bool showsVideoFrame() const { return !m_frame.isNull(); }
    RoundIconButton *playButton() const { return m_play; }
    RoundIconButton *restartButton() const { return m_restart; }

    static constexpr double kPreviewSeconds = 8.0;

Q_SIGNALS:
    void posterChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void teardown();
    void startShortPreview();
    void togglePlay();
    void restart();
    void setPlaying(bool playing);
    QRectF panelRect() const;

    std::optional<MediaClip> m_clip;
    bool m_compact = false;
    int m_generation = 0;
    bool m_isPlaying = false;
    QImage m_poster;
    QImage m_frame;
    PreviewPlayer *m_player = nullptr;
    QTimer m_stopAfter;
    QWidget *m_controls;
    RoundIconButton *m_play;
    RoundIconButton *m_restart;
    QLabel *m_duration;
};

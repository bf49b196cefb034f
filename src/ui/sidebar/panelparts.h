#pragma once

#include "ui/uicontext.h"

#include <QColor>
#include <QFont>
#include <QString>

class HintBanner;
class QBoxLayout;
class QLabel;
class QLayout;
class QWidget;
class ToggleSwitch;

// Small building blocks shared by the sidebar, the studios and the settings window, so that
// every text of the same role gets the same size and opacity.
namespace PanelParts {

QLabel *label(const QString &text, double pixelSize, double whiteAlpha,
              QFont::Weight weight = QFont::Normal);
QLabel *colouredLabel(const QString &text, double pixelSize, const QColor &color,
                      QFont::Weight weight = QFont::Normal);
QLabel *symbol(const QString &name, const QColor &color, int sidePx);
// Bold, widely spaced capitals filled with the accent gradient (the brand's kicker).
QWidget *kicker(const QString &text, double pixelSize, double letterSpacing);
void setTextColor(QLabel *label, const QColor &color);

// A switch with its own text beside it (the "Number as 01, 02…" line).
struct SwitchLine {
    QWidget *row;
    ToggleSwitch *toggle;
};
SwitchLine switchLine(const QString &text, bool on);

// The tip `hintId` as a banner appended to `layout`, unless it was dismissed. Dismissing it
// records the id for good; every banner with that id then leaves, wherever it is.
HintBanner *addHint(QBoxLayout *layout, const UiContext &context, const QString &hintId,
                    const QString &textKey);

// Deletes every item of the layout, widgets included (lists that are rebuilt from state).
void clear(QLayout *layout);

} // namespace PanelParts

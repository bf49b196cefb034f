#pragma once

#include "apptheme.h"

class QWidget;

// Entrances and exits of whole views. A view fades (and slides) in on an opacity effect that is
// removed when the motion ends, so nothing stays composited once it is still.
namespace Motion {

enum class Entrance { fade, fadeSlideUp };

void enter(QWidget *widget, Entrance entrance, AppTheme::Spring spring);
// Hides the widget at the end of a fade; the widget stays usable meanwhile.
void leave(QWidget *widget, AppTheme::Spring spring);
// Tests and screenshots: every motion jumps to its end.
void setInstant(bool instant);
bool isInstant();

} // namespace Motion

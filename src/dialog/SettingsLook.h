#pragma once

#include <QPalette>
#include <QSize>

class QDialog;
class QWidget;

/// How the settings dialog looks. Everything that is touched is at least kTouchHeight high.
namespace dravik {

/// Measures are those of a screen of 800 x 480; on a larger one they grow as a page does. They
/// never shrink: a smaller screen shows less at a time.
constexpr int kTouchHeight = 42;

/// How much larger than the measures things are in a dialog of that size, whichever way it is
/// turned; at least 1.
double TouchScale(QSize dialog);

/// A measure in pixels of the dialog that was given its look last.
int Px(int measure);

/// Gives a window the look of the program: one accent colour on dark slate, or on light grey where
/// the skin's key Look says so. To be called before the controls are made, since they take their
/// size from the scale.
void ApplySettingsLook(QWidget* window, double scale);

/// The colours of that look, for what the style draws by itself: boxes, arrows and ticks.
QPalette LookPalette();

/// Makes a dialog of the toolkit, a child of such a window, as large as that and usable by a
/// finger.
void FitForTouch(QDialog* dialog);

}  // namespace dravik

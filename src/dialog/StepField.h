#pragma once

#include <QWidget>

#include "settings/SettingsTable.h"

class QLineEdit;

namespace dravik {

/// The text of a number that was stepped up or down. The decimal sign and the decimal places stay
/// as they were written, what is no number counts as 0, and the region's decimal sign is taken
/// where the text has none.
QString Stepped(const QString& text, const NumberSteps& steps, bool up);

/// A field for a number with a button less and a button more, both for a finger; in the field the
/// keys Down and Up do the same. Any text may be typed into it.
class StepField : public QWidget {
 public:
    /// @param name  of the field; the buttons are called that and "Less" and "More"
    StepField(const char* name, const NumberSteps& steps);

    QLineEdit* Field() const { return field_; }

 protected:
    bool eventFilter(QObject* object, QEvent* event) override;

 private:
    void AddButton(const char* ending, const QString& text, bool up);
    void Step(bool up);

    QLineEdit* field_;
    NumberSteps steps_;
};

}  // namespace dravik

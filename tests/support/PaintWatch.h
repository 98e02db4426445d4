#pragma once

#include <QApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QRegion>
#include <QTest>
#include <QWidget>

namespace dravik {

/// Notes what is painted of a widget and of everything in it, in the widget's own coordinates.
class PaintWatch : public QObject {
 public:
    explicit PaintWatch(QWidget* widget) : widget_(widget) {
        QTest::qWait(20);
        qApp->installEventFilter(this);
    }

    /// What was painted since the last call, once all pending repaints are done.
    QRegion Take() {
        QTest::qWait(20);
        return std::exchange(painted_, {});
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::Paint || !object->isWidgetType()) return false;
        const auto* painted = static_cast<QWidget*>(object);
        if (painted == widget_ || widget_->isAncestorOf(painted))
            painted_ += static_cast<QPaintEvent*>(event)->region().translated(
                painted->mapTo(widget_, QPoint(0, 0)));
        return false;
    }

 private:
    QWidget* widget_;
    QRegion painted_;
};

}  // namespace dravik

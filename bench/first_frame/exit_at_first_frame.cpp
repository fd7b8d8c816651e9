// Loaded with LD_PRELOAD into any Qt Widgets program: ends the process once its first top-level
// window has been painted and the frame has reached the display server, so that the process's
// wall time is its start-to-first-frame time. The same library goes into the yardstick and
// into Quillet, so neither program needs a hook of its own.
#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <unistd.h>

namespace {

class FirstFrame : public QObject {
  public:
    bool eventFilter(QObject* target, QEvent* event) override {
        if (!seen_ && event->type() == QEvent::Paint && target->isWidgetType() &&
            static_cast<QWidget*>(target)->isWindow()) {
            seen_ = true;
            // The window's paint event comes first; its children paint and the backing store
            // flushes in the same call, so a queued call runs after the flush.
            QMetaObject::invokeMethod(this, &FirstFrame::Finish, Qt::QueuedConnection);
        }
        return false;
    }

  private:
    static void Finish() {
        // A round trip: the server has taken the frame before the process ends.
        QGuiApplication::sync();
        ::_exit(0);
    }
    bool seen_ = false;
};

void Install() {
    qApp->installEventFilter(new FirstFrame);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Install)

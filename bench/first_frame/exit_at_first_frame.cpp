// Loaded with LD_PRELOAD into any Qt Widgets program: ends the process once its first top-level
// window has been painted and the frame has reached the display server, so that the process's
// wall time is its start-to-first-frame time. The same library goes into the yardstick and
// into Quillet, so neither program needs a hook of its own.
//
// With FIRST_FRAME_T0_NS set to the CLOCK_MONOTONIC time of the launch (in ns), it writes one
// line "phases <loaded> <application> <shown> <painted> <flushed>" to stderr: the milliseconds
// from the launch to this library's loading (the dynamic linker's work), to the application
// object, to the first top-level window's show event, to its first paint event and to the end.
#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

double Since(long long launch) {
    timespec t{};
    ::clock_gettime(CLOCK_MONOTONIC, &t);
    return (t.tv_sec * 1000000000LL + t.tv_nsec - launch) / 1e6;
}

long long Launch() {
    const char* text = std::getenv("FIRST_FRAME_T0_NS");
    return text ? std::atoll(text) : 0;
}

double phases[5];
const long long launch = Launch();
const bool loadedAt = (phases[0] = Since(launch), true);

class FirstFrame : public QObject {
  public:
    bool eventFilter(QObject* target, QEvent* event) override {
        if (!shown_ && event->type() == QEvent::Show && target->isWidgetType() &&
            static_cast<QWidget*>(target)->isWindow()) {
            shown_ = true;
            phases[2] = Since(launch);
        }
        if (!seen_ && event->type() == QEvent::Paint && target->isWidgetType() &&
            static_cast<QWidget*>(target)->isWindow()) {
            seen_ = true;
            phases[3] = Since(launch);
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
        phases[4] = Since(launch);
        if (launch)
            std::fprintf(stderr, "phases %.2f %.2f %.2f %.2f %.2f\n", phases[0], phases[1], phases[2],
                         phases[3], phases[4]);
        std::fflush(stderr);
        ::_exit(0);
    }
    bool shown_ = false;
    bool seen_ = false;
};

void Install() {
    (void)loadedAt;
    phases[1] = Since(launch);
    qApp->installEventFilter(new FirstFrame);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Install)

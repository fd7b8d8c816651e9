// The yardstick of bench/start_frame: the smallest Qt Widgets program that shows a window.
#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QLabel hello("Hello, world");
    hello.resize(320, 120);
    hello.show();
    return app.exec();
}

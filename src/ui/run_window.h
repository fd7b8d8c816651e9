#pragma once
// The run window: shows a run's output as it comes and keeps the main form from taking
// input until the run ends. After "exit" it closes itself when the command ends; after
// "wait" it stays until the person closes it.
#include <QDialog>
#include <QPointer>
#include <QProcess>
#include <QStringDecoder>
#include <filesystem>

#include "env/ports.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace quillet::ui {

class RunWindow : public QDialog {
    Q_OBJECT
public:
    explicit RunWindow(QWidget* parent = nullptr);
    // Runs `program` with `arguments` in `workingDir` and returns its exit status (-1 when
    // it could not start or was stopped) once the window has closed.
    int Exec(const QString& program, const QStringList& arguments, const QString& workingDir, bool keepOpen);
    QString output() const;
    // The last line: what the run came to.
    QString statusLine() const;
    bool running() const { return process_.state() != QProcess::NotRunning; }
#ifdef _WIN32
    void setNativeArguments(const QString& a) { process_.setNativeArguments(a); }
#endif

protected:
    void reject() override;

private:
    void Append(const QByteArray& bytes);
    void Finished(int exitCode, QProcess::ExitStatus status);
    void FailedToStart();

    QProcess process_;
    QStringDecoder decoder_{QStringDecoder::Utf8};
    QLabel* command_;
    QLabel* status_;
    QPlainTextEdit* log_;
    QPushButton* stop_;
    QPushButton* close_;
    QString workingDir_;
    std::filesystem::file_time_type started_;
    bool keepOpen_ = false;
    int result_ = -1;
};

// The CommandRunner port on the desktop: each run gets its own run window.
class RunWindowRunner : public CommandRunner {
public:
    void setParent(QWidget* parent) { parent_ = parent; }
    int Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) override;

private:
    QPointer<QWidget> parent_;
};

}  // namespace quillet::ui

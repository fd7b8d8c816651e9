#include "ui/run_window.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "run/command_line.h"
#include "run/run_outcome.h"

namespace quillet::ui {

RunWindow::RunWindow(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Quillet run");
    setModal(true);
    command_ = new QLabel(this);
    command_->setWordWrap(true);
    command_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    log_ = new QPlainTextEdit(this);
    log_->setReadOnly(true);
    log_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    log_->setLineWrapMode(QPlainTextEdit::NoWrap);
    status_ = new QLabel(this);
    auto* buttons = new QDialogButtonBox(this);
    stop_ = buttons->addButton("&Stop", QDialogButtonBox::DestructiveRole);
    close_ = buttons->addButton(QDialogButtonBox::Close);
    close_->setEnabled(false);
    // Asked to stop first (a series then writes the table of what it fitted), then made to.
    connect(stop_, &QPushButton::clicked, this, [this] {
        process_.terminate();
        QTimer::singleShot(3000, this, [this] {
            if (running()) process_.kill();
        });
    });
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(command_);
    layout->addWidget(log_, 1);
    layout->addWidget(status_);
    layout->addWidget(buttons);
    resize(760, 480);

    process_.setProcessChannelMode(QProcess::MergedChannels);
    connect(&process_, &QProcess::readyRead, this, [this] { Append(process_.readAll()); });
    connect(&process_, &QProcess::finished, this, &RunWindow::Finished);
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart) FailedToStart();
    });
}

int RunWindow::Exec(const QString& program, const QStringList& arguments, const QString& workingDir,
                    bool keepOpen) {
    keepOpen_ = keepOpen;
    workingDir_ = workingDir;
    started_ = std::filesystem::file_time_type::clock::now();
    command_->setText(program + " " + arguments.join(' '));
    status_->setText("Running ...");
    process_.setWorkingDirectory(workingDir);
    process_.start(program, arguments);
    exec();
    return result_;
}

QString RunWindow::output() const { return log_->toPlainText(); }
QString RunWindow::statusLine() const { return status_->text(); }

void RunWindow::reject() {
    // Escape and the title bar's close do nothing while the command runs.
    if (!running()) QDialog::reject();
}

void RunWindow::Append(const QByteArray& bytes) {
    log_->moveCursor(QTextCursor::End);
    log_->insertPlainText(decoder_.decode(bytes));
    log_->moveCursor(QTextCursor::End);
}

void RunWindow::Finished(int exitCode, QProcess::ExitStatus status) {
    Append(process_.readAll());
    result_ = status == QProcess::NormalExit ? exitCode : -1;
    // The last line says what the run came to, from the report the solver left in "output".
    const RunOutcome outcome = ReadRunOutcome(
        QDir(workingDir_).filePath("output/~Quillet.out").toStdString(), result_, started_);
    QString line = QString::fromStdString(OutcomeLine(outcome));
    if (line.isEmpty())
        line = status == QProcess::NormalExit ? QString("Finished with status %1.").arg(exitCode) : QString("Stopped.");
    for (const auto& flag : outcome.flags) line += "\nFlagged: " + QString::fromStdString(flag);
    status_->setText(line);
    stop_->setEnabled(false);
    close_->setEnabled(true);
    close_->setDefault(true);
    close_->setFocus();
    if (!keepOpen_) accept();
}

void RunWindow::FailedToStart() {
    result_ = -1;
    status_->setText("Could not start: " + process_.errorString());
    stop_->setEnabled(false);
    close_->setEnabled(true);
}

int RunWindowRunner::Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) {
    RunWindow window(parent_);
#ifdef _WIN32
    // cmd reads its own command line; nothing of it is quoted or split here.
    const QString program = "cmd";
    const QStringList arguments;
    window.setNativeArguments("/C " + QString::fromStdString(commandLine));
#else
    const QString program = "/bin/sh";
    QStringList arguments;
    for (const auto& a : SplitCommandLine(commandLine)) arguments << QString::fromStdString(a);
#endif
    return window.Exec(program, arguments, QString::fromStdString(workingDir), keepOpen);
}

}  // namespace quillet::ui

#pragma once
// The library reaches people and the platform only through these ports.
#include <ctime>
#include <string>

namespace quillet {

// Message box style codes and results, as the classic numeric codes.
namespace mb {
inline constexpr int OKOnly = 0;
inline constexpr int OKCancel = 1;
inline constexpr int YesNoCancel = 3;
inline constexpr int YesNo = 4;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;

inline constexpr int OK = 1;
inline constexpr int Cancel = 2;
inline constexpr int Yes = 6;
inline constexpr int No = 7;
}  // namespace mb

struct FileDialogRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    std::string title;
    std::string filter;  // "Label|pattern|Label|pattern..."
    std::string startFolder;
    std::string proposedName;
    std::string defaultExt;  // e.g. ".Fit": given to a name typed without an extension
};

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Shows a message box; returns the classic result code (mb::OK, mb::Yes, ...).
    virtual int MsgBox(const std::string& text, int style, const std::string& title) = 0;
    // Returns the chosen full path; a cancelled dialog raises error 32755.
    virtual std::string FileDialog(const FileDialogRequest& request) = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    // Local calendar time.
    virtual std::tm Now() = 0;
};

class SystemClock : public Clock {
public:
    std::tm Now() override;
};

class CommandRunner {
public:
    virtual ~CommandRunner() = default;
    // Runs a command line in a visible console with `workingDir` as its working directory,
    // and returns when it has ended. `keepOpen` is the "wait" of the run: the console
    // stays until the person closes it. Returns the command's exit status.
    virtual int Run(const std::string& commandLine, const std::string& workingDir, bool keepOpen) = 0;
};

class ShellOpener {
public:
    virtual ~ShellOpener() = default;
    // Opens a document, an address or a mailto: with the desktop's handler; failures are ignored.
    virtual void Open(const std::string& target, const std::string& verb) = 0;
};

}  // namespace quillet

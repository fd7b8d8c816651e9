#pragma once
// The response file (".Fit"): one answer a line, each followed by its question as a comment.
#include <ctime>
#include <string>
#include <vector>

#include "model/app_state.h"

namespace quillet {

// An open response file read line by line; reading past the end closes it.
class LineReader {
public:
    LineReader() = default;
    // Opens `path`; a file that cannot be read leaves the reader closed.
    static LineReader Open(const std::string& path);
    // Opens `path`; a file that cannot be read raises its classic error (53, 75, ...).
    static LineReader OpenOrRaise(const std::string& path);
    bool isOpen() const { return open_; }
    // The next line (UTF-8, without its line end); false when the file is closed or ended.
    bool Next(std::string& line);
    void Close() { open_ = false; }

private:
    std::vector<std::string> lines_;
    std::size_t pos_ = 0;
    bool open_ = false;
};

// value, two blanks, two tabs, "!* " + label[:50] (starred) or "! " + label[:70]; trimmed.
std::string WriteValueLine(const std::string& value, const std::string& label, bool starred = false);
// The value of the next line; "-EOF-" once the file has ended.
std::string ReadValueLine(LineReader& in);

// "mmmm dd, yyyy @ h:mm AMPM" with English month names.
std::string FormatFileDate(const std::tm& t);
// The label of a solver-variable line, taken from its SolvQuestion caption.
std::string SolverLineLabel(const std::string& caption);

// The text of the response file for the record as the form shows it (GetAnswers first).
std::string BuildResponseText(AppState& s, const std::string& fileName);
// Writes the response file `fileName` in `folder`; on success SaveFailed is cleared and
// PathStatus is "Ok". Error 75 is passed on; other failures are reported to the person.
void WriteAnsFile(AppState& s, const std::string& fileName, const std::string& folder);
// Reads the open response file into the record.
void FileReadMe(AppState& s, LineReader& in, const std::string& fileName, const std::string& folder);

// Reads `folder`/`fileName` into a fresh record as the program reads it, through a form of its
// own; the messages the reader would show go into `messages` instead (empty on success).
ResponseRecord ReadResponseRecord(const std::string& folder, const std::string& fileName,
                                  std::vector<std::string>& messages);

}  // namespace quillet

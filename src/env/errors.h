#pragma once
// Numbered run-time errors: number, source and description travel together,
// so that the form code can show "Unexpected error #n occured: ..." for any failure.
#include <stdexcept>
#include <string>

namespace quillet {

namespace err {
inline constexpr int InvalidCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int DivisionByZero = 11;
inline constexpr int BadFileName = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int DeviceIO = 57;
inline constexpr int DiskFull = 61;
inline constexpr int InputPastEnd = 62;
inline constexpr int DeviceUnavailable = 68;
inline constexpr int PermissionDenied = 70;
inline constexpr int DiskNotReady = 71;
inline constexpr int PathFileAccess = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int Registry = 1001;
inline constexpr int DialogCancelled = 32755;
}  // namespace err

class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, std::string source, std::string description);
    int number() const { return number_; }
    const std::string& source() const { return source_; }
    const std::string& description() const { return description_; }

private:
    int number_;
    std::string source_;
    std::string description_;
};

// The classic description of a run-time error number ("File not found", ...).
std::string ClassicDescription(int number);

[[noreturn]] void Raise(int number, const std::string& source = {},
                        const std::string& description = {});

// Maps an errno value to the classic number: a missing folder is 76, a missing file 53.
RuntimeError ErrorFromErrno(int errnum, bool aboutFolder, const std::string& source = {});

// "Unexpected error #" n " occured: " description
std::string UnexpectedErrorText(const RuntimeError& e);

}  // namespace quillet

#include "env/errors.h"

#include <cerrno>
#include <cstring>

namespace quillet {

RuntimeError::RuntimeError(int number, std::string source, std::string description)
    : std::runtime_error(description),
      number_(number),
      source_(std::move(source)),
      description_(std::move(description)) {}

std::string ClassicDescription(int number) {
    switch (number) {
        case 5: return "Invalid procedure call or argument";
        case 6: return "Overflow";
        case 11: return "Division by zero";
        case 52: return "Bad file name or number";
        case 53: return "File not found";
        case 57: return "Device I/O error";
        case 61: return "Disk full";
        case 62: return "Input past end of file";
        case 68: return "Device unavailable";
        case 70: return "Permission denied";
        case 71: return "Disk not ready";
        case 75: return "Path/File access error";
        case 76: return "Path not found";
        case 32755: return "Cancel was selected.";
        default: return "Application-defined or object-defined error";
    }
}

void Raise(int number, const std::string& source, const std::string& description) {
    throw RuntimeError(number, source, description.empty() ? ClassicDescription(number) : description);
}

RuntimeError ErrorFromErrno(int errnum, bool aboutFolder, const std::string& source) {
    int number;
    switch (errnum) {
        case ENOENT:
        case ENOTDIR: number = aboutFolder ? err::PathNotFound : err::FileNotFound; break;
        case EACCES:
        case EPERM:
        case EROFS: number = err::PathFileAccess; break;
        case ENOSPC: number = err::DiskFull; break;
        case EIO: number = err::DeviceIO; break;
        default:
            return RuntimeError(err::DeviceIO, source, std::strerror(errnum));
    }
    return RuntimeError(number, source, ClassicDescription(number));
}

std::string UnexpectedErrorText(const RuntimeError& e) {
    return "Unexpected error #" + std::to_string(e.number()) + " occured: " + e.description();
}

}  // namespace quillet

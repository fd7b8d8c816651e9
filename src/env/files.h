#pragma once
// Whole-file reading and crash-safe replacing of files.
#include <functional>
#include <string>
#include <string_view>

namespace quillet {

// Reads a file's bytes; raises a classic error (53 missing, 75 refused, ...) on failure.
std::string ReadWholeFile(const std::string& path);

// Writes `bytes` to a temporary file beside `path`, flushes it to disk and renames it over
// `path`, so a failed write never destroys the previous version. An existing target that
// cannot be written raises 75 before anything is written; other failures raise the
// classic number of the platform's error.
void WriteFileAtomically(const std::string& path, const std::string& bytes);

// The same for a file made piece by piece: `produce` hands each piece to the sink it gets, so
// a long file never has to be held whole.
using ByteSink = std::function<void(std::string_view)>;
// `durable` false leaves out the flush to disk: for results a run can make again, a crash may
// then leave an empty file, never a mixed one.
void WriteFileAtomically(const std::string& path, const std::function<void(const ByteSink&)>& produce,
                         bool durable = true);

}  // namespace quillet

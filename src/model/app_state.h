#pragma once
// All program-wide state in one object owned by the program; routines take it explicitly.
#include <cstdint>
#include <string>

#include "env/env.h"
#include "model/form_model.h"
#include "model/response_record.h"

namespace quillet {

struct AppState {
    Env env;
    ResponseRecord rec;
    FormModel form;

    // Run state.
    std::string CurrentFile;  // response file being edited, without folder
    std::string UserDir;      // folder of the response files
    std::string DataDir;      // folder of the data file named in the answers
    std::string DataFile;     // data file name without folder
    std::string RunMode = " ";
    std::string RunFile;
    std::string RunDir;
    std::string WorkDir;
    std::string DemoFile;
    std::string CommandLine;
    std::string ShortDataPath;
    std::string UserPath = "demos";  // relative folder stored as userPath
    std::string DeleteFolder;        // where the Delete dialog starts next time
    std::string FileExt = ".Fit";
    std::int16_t RunCount = 0;
    int RunsEnded = 0;  // runs ended since start; viewers reload when it changes

    // Flags.
    bool DataChanged = false;
    bool SaveFailed = false;
    bool Written = false;         // set by a successful WriteAnsFile
    std::string PathStatus;       // "Ok" after a successful write
};

}  // namespace quillet

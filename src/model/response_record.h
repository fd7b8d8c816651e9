#pragma once
// The answers of one response file, kept as text exactly as typed.
#include <array>
#include <cstdint>
#include <string>

namespace quillet {

struct ResponseRecord {
    std::array<std::string, 13> Answers;  // 1..12; element 0 unused
    std::int16_t ModelID = 0;             // list position in Methods; -1: no list entry
    std::array<std::string, 16> QuestionLabels;
    std::int16_t WeightFlag = 0;
    std::string Note1;
    std::string Note2;
    std::int16_t SolverCount = 0;
    std::array<std::string, 7> SolverValues;  // 1..6; element 0 unused
    std::string ResponseTitle;
    std::string ResponseFolder;
};

}  // namespace quillet

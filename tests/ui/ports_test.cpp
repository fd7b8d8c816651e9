// The desktop adapters of the ports: message-box styles, file filters, the run window's arguments.
#include <gtest/gtest.h>

#include <QFile>
#include <filesystem>

#include "support/test_env.h"
#include "ui/file_filter.h"
#include "ui/msgbox_style.h"
#include "ui/run_window.h"

namespace quillet::ui {
namespace {

using SB = QMessageBox::StandardButton;
using testing::ReadBytes;
using testing::TempDir;

struct StyleCase {
    int style;
    QMessageBox::StandardButtons buttons;
    QMessageBox::Icon icon;
    SB defaultButton;
};

TEST(MsgBoxStyle, DecodesButtonsIconAndDefaultFromTheirBitsAndGivesTheClassicResults) {
    const StyleCase cases[] = {
        {1 + 48, SB::Ok | SB::Cancel, QMessageBox::Warning, SB::Ok},
        {2 + 16, SB::Abort | SB::Retry | SB::Ignore, QMessageBox::Critical, SB::Abort},
        {3 + 512, SB::Yes | SB::No | SB::Cancel, QMessageBox::NoIcon, SB::Cancel},
        {4 + 32 + 256, SB::Yes | SB::No, QMessageBox::Question, SB::No},
        {5 + 64, SB::Retry | SB::Cancel, QMessageBox::Information, SB::Retry},
        // 481 = 256 + 224 + 1: OK and Cancel, an icon field that names no icon, Cancel as default.
        {481, SB::Ok | SB::Cancel, QMessageBox::NoIcon, SB::Cancel},
        // A default beyond the buttons falls back to the first.
        {0 + 512, SB::Ok, QMessageBox::NoIcon, SB::Ok},
    };
    for (const auto& c : cases) {
        const MsgBoxStyle d = DecodeMsgBoxStyle(c.style);
        EXPECT_EQ(d.buttons, c.buttons) << "style " << c.style;
        EXPECT_EQ(d.icon, c.icon) << "style " << c.style;
        EXPECT_EQ(d.defaultButton, c.defaultButton) << "style " << c.style;
    }
    // The pressed button gives the classic result.
    const std::pair<SB, int> results[] = {{SB::Ok, 1},     {SB::Cancel, 2}, {SB::Abort, 3}, {SB::Retry, 4},
                                          {SB::Ignore, 5}, {SB::Yes, 6},    {SB::No, 7}};
    for (const auto& [button, result] : results) EXPECT_EQ(ClassicResult(button), result);
}

TEST(FileFilter, KeepsEachLabelAndGivesQtThePatterns) {
    EXPECT_EQ(NameFilters("All Files (*.*)|*.*|Input Data files (*.??0.data)|*.??0.data|Both|*.a;*.b"),
              (QStringList{"All Files (*.*) (*)", "Input Data files (*.??0.data) (*.??0.data)", "Both (*.a *.b)"}));
    EXPECT_TRUE(NameFilters("").isEmpty());
}

TEST(RunWindowRunner, HandsTheScriptItsArgumentsSplitAtBlanksWithoutAShell) {
    TempDir dir;
    const std::string script = dir / "run-FitW.sh";
    testing::WriteBytes(script, "for a in \"$@\"; do echo \"[$a]\"; done > args.log\n");
    RunWindowRunner runner;
    EXPECT_EQ(runner.Run(script + "  x;touch${IFS}pwned.Fit   \"q\"  $(id) exit", dir.path(), false), 0);
    EXPECT_EQ(ReadBytes(dir / "args.log"), "[x;touch${IFS}pwned.Fit]\n[\"q\"]\n[$(id)]\n[exit]\n");
    EXPECT_FALSE(std::filesystem::exists(dir / "pwned.Fit"));
}

}  // namespace
}  // namespace quillet::ui

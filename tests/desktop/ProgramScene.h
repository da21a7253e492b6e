#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <memory>
#include <string>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "data/Engine.h"
#include "designer/frmCustomReport.h"
#include "desktop/DesignerProgram.h"
#include "desktop/Driver.h"
#include "dialogs/frmStockCodeTable.h"

namespace quillform {

/// The whole program but for its own event loop, over a folder of its own.
class ProgramScene : public testing::Test {
protected:
    void SetUp() override { qputenv("QUILLFORM_HOME", QByteArray::fromStdString(folder.Path().string())); }
    void TearDown() override {
        program.reset();
        qunsetenv("QUILLFORM_HOME");
    }

    void Start(const std::optional<std::string>& layoutFile = {}) {
        program = std::make_unique<DesignerProgram>(
            DesignerProgram::Services{user, *engine, clock, [this](const auto& path) { Check(path); }, {}});
        QObject::connect(program.get(), &DesignerProgram::Ended, [this] { hasEnded = true; });
        program->Start(layoutFile);
    }
    void Check(const std::optional<std::string>& path) {
        checked = path;
        if (checkFails) throw RunTimeError(ErrorNumber::FileMissing, "The database is gone.");
    }
    /// The main form that is open, once it has the keyboard and has done what it does at its first activation.
    template <typename Form>
    Form& Opened() {
        const auto isOpen = [this] { return dynamic_cast<Form*>(program->Form()) != nullptr; };
        if (!QTest::qWaitFor(isOpen)) throw std::runtime_error("the form doesn't open");
        EXPECT_TRUE(QTest::qWaitForWindowActive(program->Form()));
        QTest::qWait(1);
        return dynamic_cast<Form&>(*program->Form());
    }
    dialogs::frmStockCodeTable& StartForm() { return Opened<dialogs::frmStockCodeTable>(); }
    designer::frmCustomReport& Designer() { return Opened<designer::frmCustomReport>(); }
    bool Ends() {
        return QTest::qWaitFor([this] { return hasEnded; }) && program->Form() == nullptr;
    }

    ScratchFolder folder;
    ScriptedUser user;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    std::optional<std::string> checked;  ///< the report database that was checked last
    bool checkFails = false;
    bool hasEnded = false;
    std::unique_ptr<DesignerProgram> program;
};

}  // namespace quillform

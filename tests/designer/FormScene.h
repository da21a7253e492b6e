#pragma once

#include <QTest>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "data/Engine.h"
#include "designer/SurfaceFrame.h"
#include "designer/frmCustomReport.h"
#include "desktop/Driver.h"

namespace quillform::designer::testing {

/// The main form on the screen, over a folder of its own that is the program's.
class FormScene : public ::testing::Test {
protected:
    /// `prepare` may take forms away before the main form is made.
    void Open(std::optional<std::string> layoutAtStart = {}, bool hasForms = true);
    void SetUp() override;
    void TearDown() override;

    clssFields& Add(float left, float top, int length, std::string text = "Text", int code = 1);
    const Picture& Pic(int index) const { return *form->Surface().Pic().Find(index); }
    clssFields& Item(int position) { return layout.Fields.Item(position); }
    SurfaceView& View() const { return form->Frame().View(); }
    QWidget& Control(const char* name) const { return Named<QWidget>(*form, name); }
    bool IsDown(const char* button) const;

    // The mouse at a point of the viewport in cells, as the window system tells of it.
    void Press(double x, double y, Qt::MouseButton button = Qt::LeftButton);
    void Move(double x, double y);
    void Release(double x, double y, Qt::MouseButton button = Qt::LeftButton);
    void Click(double x, double y, Qt::MouseButton button = Qt::LeftButton);
    void DoubleClick(double x, double y, Qt::MouseButton button = Qt::LeftButton);
    void Drag(double fromX, double fromY, double toX, double toY);
    void Key(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);

    ScratchFolder folder;
    ScriptedUser user;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Layout layout;
    PrinterSetup printer;
    std::vector<std::string> shown;  ///< names of the forms that were opened
    std::optional<bool> unloadedByExit;
    std::function<void()> inReportOptions;
    bool hasPrintService = true;
    std::unique_ptr<frmCustomReport> form;

private:
    std::vector<print::Printer> Printers() const;
    QPoint InWindow(double x, double y) const;
};

}  // namespace quillform::designer::testing

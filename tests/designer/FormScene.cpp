#include <gtest/gtest.h>
// After the test framework, which the scene is made of.
#include <QToolButton>

#include "PlainItem.h"
#include "designer/FormScene.h"

namespace quillform::designer::testing {

void FormScene::SetUp() { qputenv("QUILLFORM_HOME", QByteArray::fromStdString(folder.Path().string())); }

void FormScene::TearDown() {
    form.reset();
    qunsetenv("QUILLFORM_HOME");
}

void FormScene::Open(std::optional<std::string> layoutAtStart, bool hasForms) {
    DesignerForms forms;
    const auto note = [this](const char* name) {
        return [this, name](QWidget&, DesignSurface&) { shown.emplace_back(name); };
    };
    if (hasForms) {
        forms.reportOptions = [this](QWidget&, DesignSurface&) {
            shown.emplace_back("reportOptions");
            if (inReportOptions) inReportOptions();
        };
        forms.recordQuery = note("recordQuery");
        forms.dataFields = note("dataFields");
        forms.textFields = note("textFields");
        forms.fieldOptions = note("fieldOptions");
        forms.checkDatabase = [this] { shown.emplace_back("checkDatabase"); };
    }
    form = std::make_unique<frmCustomReport>(
        DesignerServices{layout, user, *engine, clock, printer, [this] { return Printers(); }}, std::move(forms),
        std::move(layoutAtStart));
    QObject::connect(form.get(), &frmCustomReport::Unloaded, [this](bool byExit) { unloadedByExit = byExit; });
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    QTest::qWait(1);
}

std::vector<print::Printer> FormScene::Printers() const {
    if (!hasPrintService) throw RunTimeError(ErrorNumber::PrinterInformation, "The print service doesn't answer.");
    return {{.name = "Office", .description = "Laser", .location = "2nd floor", .isDefault = true, .reasons = {}}};
}

clssFields& FormScene::Add(float left, float top, int length, std::string text, int code) {
    clssFields item = PlainItem(left, top, length, std::move(text), code, "Courier New");
    item.Index = form->Surface().LowestFreeIndex();
    layout.pictures[item.Index] = {static_cast<float>(length), 1};
    clssFields& added = layout.Fields.Add(item);
    form->Surface().ShowItems();
    return added;
}

bool FormScene::IsDown(const char* button) const { return Named<QToolButton>(*form, button).isChecked(); }

QPoint FormScene::InWindow(double x, double y) const {
    const QSizeF cell = View().CellSize();
    return View().mapTo(form.get(), QPointF(x * cell.width(), y * cell.height()).toPoint());
}

void FormScene::Press(double x, double y, Qt::MouseButton button) {
    Move(x, y);
    QTest::mousePress(form->windowHandle(), button, {}, InWindow(x, y));
}

void FormScene::Move(double x, double y) { QTest::mouseMove(form->windowHandle(), InWindow(x, y)); }

void FormScene::Release(double x, double y, Qt::MouseButton button) {
    QTest::mouseRelease(form->windowHandle(), button, {}, InWindow(x, y));
}

void FormScene::Click(double x, double y, Qt::MouseButton button) {
    Press(x, y, button);
    Release(x, y, button);
}

void FormScene::DoubleClick(double x, double y, Qt::MouseButton button) {
    Move(x, y);
    QTest::mouseDClick(form->windowHandle(), button, {}, InWindow(x, y));
}

void FormScene::Drag(double fromX, double fromY, double toX, double toY) {
    Press(fromX, fromY);
    Move((fromX + toX) / 2, (fromY + toY) / 2);
    Move(toX, toY);
    Release(toX, toY);
}

void FormScene::Key(Qt::Key key, Qt::KeyboardModifiers held) {
    form->activateWindow();  // a dialog may have had the keyboard
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    QTest::keyClick(form->windowHandle(), key, held);
}

}  // namespace quillform::designer::testing

// What a form over a catalog of 10,000 rows keeps its user waiting: opening it, a click on a field, a letter in the
// search line. The limit is a tenth of a second.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <string>

#include "ScratchFolder.h"
#include "ScriptedUser.h"
#include "data/Engine.h"
#include "designer/ScreenFonts.h"
#include "designer/frmDataFields.h"
#include "dialogs/SmallCatalog.h"
#include "dialogs/frmReportQuery.h"

namespace quillform {
namespace {

constexpr int rowCount = 10'000;

/// The report database, and what the forms are handed.
class Desk {
public:
    explicit Desk(int tableCount) {
        layout.strAppPath = folder.Path().string() + "/";
        layout.settings.strDatabase[1] = folder.File("report.mdb");
        std::vector<CatalogRow> rows;
        for (int id = 1; id <= rowCount; ++id)
            rows.push_back(dialogs::testing::RowOf(id, "Table " + std::to_string(id % tableCount),
                                                   "Field number " + std::to_string(id * 7919L % rowCount)));
        dialogs::testing::MakeCatalog(*engine, layout.settings.strDatabase[1], rows);
    }

    template <typename Step>
    void InQuery(Step step) {
        dialogs::frmReportQuery form(layout, user, *engine, clock);
        Run(form, step);
    }
    template <typename Step>
    void InDataFields(Step step) {
        designer::frmDataFields form(surface, {layout, user, *engine, clock, printer, {}});
        Run(form, step);
    }

    /// What the engine may still know of the database is gone, as in a program that has just started.
    void Forget() { engine = data::MakeEngine(clock); }

private:
    /// Does something in the form when it is painted, and closes it.
    template <typename Step>
    void Run(QDialog& form, Step step) {
        QTimer::singleShot(0, &form, [&] {
            form.repaint();
            step(form);
            form.reject();
        });
        form.exec();
        if (!user.messages.empty()) std::abort();  // what was measured then isn't what it should be
    }

    ScratchFolder folder;
    ScriptedUser user;
    SystemClock clock;
    std::unique_ptr<DBEngine> engine = data::MakeEngine(clock);
    Layout layout;
    designer::ScreenFonts fonts;
    designer::DesignSurface surface{layout, fonts};
    designer::PrinterSetup printer;
};

QTreeWidget& TreeOf(QDialog& form) { return *form.findChild<QTreeWidget*>(QStringLiteral("SSTree1")); }

void ClickNode(QTreeWidget& tree, QTreeWidgetItem& node) {
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(&node).center());
    tree.viewport()->repaint();
}

void OpenQuery(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    for (auto step : state) {
        desk.Forget();
        desk.InQuery([](QDialog&) {});
    }
}
void OpenDataFields(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    for (auto step : state) {
        desk.Forget();
        desk.InDataFields([](QDialog&) {});
    }
}
void ExpandATable(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    desk.InQuery([&](QDialog& form) {
        for (auto step : state) ClickNode(TreeOf(form), *TreeOf(form).topLevelItem(0));
    });
}
/// Opening the database is a part of it, as the form may be open for hours.
void ClickAField(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    desk.InQuery([&](QDialog& form) {
        QTreeWidgetItem& table = *TreeOf(form).topLevelItem(0);
        table.setExpanded(true);
        for (auto step : state) ClickNode(TreeOf(form), *table.child(1));
    });
}
/// Puts it on the layout, and takes it off again.
void ClickADataField(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    desk.InDataFields([&](QDialog& form) {
        QTreeWidgetItem& table = *TreeOf(form).topLevelItem(0);
        table.setExpanded(true);
        QTreeWidgetItem* field = table.child(0);
        while (field->data(0, Qt::UserRole).toString().size() > 3) field = TreeOf(form).itemBelow(field);  // up to C99
        TreeOf(form).scrollToItem(field);
        for (auto step : state) ClickNode(TreeOf(form), *field);
    });
}
void TypeIntoTheSearch(benchmark::State& state) {
    Desk desk(static_cast<int>(state.range(0)));
    desk.InQuery([&](QDialog& form) {
        auto& find = *form.findChild<QLineEdit*>(QStringLiteral("find"));
        for (auto step : state) {
            QTest::keyClick(&find, find.text().isEmpty() ? Qt::Key_7 : Qt::Key_Backspace);
            form.repaint();
        }
    });
}

#define DIALOG_BENCH(name) BENCHMARK(name)->ArgName("tables")->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond)
DIALOG_BENCH(OpenQuery);
DIALOG_BENCH(OpenDataFields);
DIALOG_BENCH(ExpandATable);
DIALOG_BENCH(ClickAField);
DIALOG_BENCH(ClickADataField);
DIALOG_BENCH(TypeIntoTheSearch);

}  // namespace
}  // namespace quillform

int main(int count, char** words) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, words);
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

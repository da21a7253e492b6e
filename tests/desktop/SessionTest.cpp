// One whole session at the program, by events alone: from the start form over the designer and its dialogs to labels on
// paper, and back.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <filesystem>

#include "designer/SurfaceFrame.h"
#include "desktop/ProgramScene.h"
#include "print/PdfTools.h"

namespace quillform {
namespace {

using designer::DesignSurface;
using designer::frmCustomReport;
using print::HasTool;

/// A label of two rows, the upper one in the third cell from its left edge.
constexpr double cellTwips = 120;
constexpr double rowTwips = 240;
constexpr float labelColumn = 2;

struct StockRow {
    std::string code, description;
    double quantity = 0, cost = 0;
};

class Session : public ProgramScene {
protected:
    static void Retype(QWidget& form, const char* box, const char* text) {
        auto& line = Named<QLineEdit>(form, box);
        line.setFocus();
        line.selectAll();
        Type(text);
    }
    /// A shortcut, for which a form must have the keyboard back from its dialogs.
    static void PressShortcut(frmCustomReport& designer, Qt::Key key) {
        designer.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&designer));
        Press(designer, key, Qt::ControlModifier);
    }
    static void Choose(frmCustomReport& designer, const char* entry) { Named<QAction>(designer, entry).trigger(); }

    /// Brings the selected item to a cell of the page, by the keyboard.
    static void MoveTo(frmCustomReport& designer, float left, float top) {
        const clssFields& item = *designer.Surface().SelectedItem();
        QWidget& view = designer.Frame().View();
        for (int step = 0; item.Left != left && step < 100; ++step)
            Press(view, item.Left > left ? Qt::Key_Left : Qt::Key_Right);
        for (int step = 0; item.Top != top && step < 100; ++step)
            Press(view, item.Top > top ? Qt::Key_Up : Qt::Key_Down);
        EXPECT_EQ(item.Left, left);
        EXPECT_EQ(item.Top, top);
    }
    void EditRecords();
    void PlaceItems(frmCustomReport& designer);
    void ChooseLabels(frmCustomReport& designer);
    void BuildQuery(frmCustomReport& designer);
    void LoadQuery(frmCustomReport& designer);
    std::vector<StockRow> RowsOfDatabase() const;
    void CheckLabels(const std::string& file) const;
};

/// Changes the first record, adds one, and goes on to the reports, which stores it.
void Session::EditRecords() {
    auto& form = StartForm();
    Retype(form, "txtFields_1", "Changed by hand");
    Retype(form, "txtFields_2", "3");
    Press(form, Qt::Key_PageDown);
    EXPECT_EQ(Named<QLabel>(form, "caption").text(), QStringLiteral("Record: 2"));
    Click(Named<QPushButton>(form, "cmdAdd"));
    const char* const added[] = {"KI-9999-ZZ", "Added by hand", "500", "1000.01", "1310-99"};
    for (int i = 0; i < 5; ++i) Retype(form, ("txtFields_" + std::to_string(i)).c_str(), added[i]);
    Click(Named<QPushButton>(form, "frmReports"));
}

void Session::PlaceItems(frmCustomReport& designer) {
    {
        const Driver driver({[](QWidget& window) {
            auto& tree = Named<QTreeWidget>(window, "SSTree1");
            ClickNode(tree, NodeOf(tree, "Stock Code"));
            ClickNode(tree, NodeOf(tree, "Stock Code Description"));
            Click(Named<QPushButton>(window, "DoneCmd"));
        }});
        Choose(designer, "Ins_0");
    }
    ASSERT_EQ(designer.Surface().Report().Fields.Count(), 2);
    DesignSurface& surface = designer.Surface();
    QWidget& view = designer.Frame().View();
    Press(view, Qt::Key_Tab);
    MoveTo(designer, labelColumn, 0);
    Press(view, Qt::Key_Tab);
    EXPECT_EQ(surface.SelectedItem()->Text, "Stock Code Description");
    MoveTo(designer, labelColumn, 1);
    Press(view, Qt::Key_Backtab);
    EXPECT_EQ(surface.SelectedItem()->Text, "Stock Code");
    const Driver driver({[](QWidget& window) {
        QTest::mouseClick(&Named<QCheckBox>(window, "Chk_2"), Qt::LeftButton, {}, {8, 8});
        Click(Named<QPushButton>(window, "DoneCmd"));
    }});
    Press(view, Qt::Key_Return);
    EXPECT_TRUE(surface.SelectedItem()->PrimarySort);
}

/// The common address label, from the styles of the report database.
void Session::ChooseLabels(frmCustomReport& designer) {
    const ReportSettings& settings = designer.Surface().Report().settings;
    EXPECT_FALSE(settings.boolLabels);
    const Driver driver({[](QWidget& window) {
        QTabBar& tabs = *Named<QTabWidget>(window, "SSTab1").tabBar();
        QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tabs.count() - 1).center());
        auto& styles = Named<QListWidget>(window, "lstLabels");
        const auto found = styles.findItems(QStringLiteral("Address, 30"), Qt::MatchStartsWith);
        ASSERT_FALSE(found.isEmpty());
        ClickRow(styles, styles.row(found.front()));
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Named<QLineEdit>(window, "Custom_0").text().trimmed() == QStringLiteral("3"); }));
        Click(Named<QPushButton>(window, "SaveCmd"));
    }});
    Choose(designer, "Edt_0");
    EXPECT_TRUE(settings.boolLabels);
    EXPECT_EQ(settings.intLabelsAcross, 3);
}

/// Three lines, the last one moved up between the others, and saved.
void Session::BuildQuery(frmCustomReport& designer) {
    const auto add = [](QWidget& window, const char* field, const char* operation, const char* value,
                        const char* join) {
        auto& tree = Named<QTreeWidget>(window, "SSTree1");
        ClickNode(tree, NodeOf(tree, field));
        Named<QComboBox>(window, "Operation").setFocus();
        Type(operation);
        Retype(window, "Value", value);
        Named<QComboBox>(window, "Join").setFocus();
        Type(join);
        Click(Named<QPushButton>(window, "AddCmd"));
    };
    user.chosen = folder.File("STOCK.QRY");
    const Driver driver({[&](QWidget& window) {
        add(window, "Quantity On Hand", "<", "100", "A");
        add(window, "Total Cost", ">", "1000", "A");
        add(window, "Stock Code", "L", "KI*", "O");
        auto& lines = Named<QListWidget>(window, "Formulas");
        EXPECT_EQ(lines.count(), 3);
        ClickRow(lines, 2);
        Click(Named<QPushButton>(window, "UpCmd"));
        Click(Named<QPushButton>(window, "SFileCmd"));
        Click(Named<QPushButton>(window, "XitCmd"));
    }});
    Choose(designer, "Edt_1");
    EXPECT_TRUE(std::filesystem::exists(folder / "STOCK.QRY"));
}

/// In place of the lines that the layout has.
void Session::LoadQuery(frmCustomReport& designer) {
    collQuery& queries = designer.Surface().Report().Queries;
    const Driver driver({[&](QWidget& window) {
        auto& lines = Named<QListWidget>(window, "Formulas");
        for (int left = lines.count(); left > 0; --left) {
            ClickRow(lines, 0);
            Click(Named<QPushButton>(window, "DelCmd"));
        }
        EXPECT_EQ(lines.count(), 0);
        Click(Named<QPushButton>(window, "LFileCmd"));
        ASSERT_EQ(lines.count(), 3);
        EXPECT_EQ(lines.item(1)->text(), QStringLiteral("OR Stock Code LIKE 'KI*'"));
        Click(Named<QPushButton>(window, "SaveCmd"));
    }});
    Choose(designer, "Edt_1");
    EXPECT_EQ(queries.Count(), 3);
}

std::vector<StockRow> Session::RowsOfDatabase() const {
    const auto database = engine->OpenDatabase(folder.File("Sample.mdb"), Access::ReadOnly);
    const auto rows = database->OpenRecordset("Stock Code Table", RecordsetType::Snapshot);
    std::vector<StockRow> stock;
    for (; !rows->IsEOF(); rows->MoveNext())
        stock.push_back({rows->Text(0), rows->Text(1), NumberOf(rows->Value(2)),
                         static_cast<double>(rows->Value(3).integer) / 10000});
    return stock;
}

void Session::CheckLabels(const std::string& file) const {
    std::vector<StockRow> expected = RowsOfDatabase();
    std::erase_if(expected, [](const StockRow& row) {
        return !(row.quantity < 100 || (row.code.starts_with("KI") && row.cost > 1000));
    });
    std::ranges::sort(expected, {}, &StockRow::code);
    ASSERT_GT(expected.size(), 90u) << "several sheets";
    const auto words = print::WordsOf(file);
    EXPECT_EQ(std::ranges::count_if(words, [](const PlacedWord& word) { return word.text.find('-') == 2; }),
              static_cast<std::ptrdiff_t>(expected.size()));
    for (std::size_t label = 0; label < expected.size(); ++label) {
        const int column = static_cast<int>(label) % 3;
        const int row = static_cast<int>(label) / 3 % 10;
        const double left = LabelEdge(column, 2.625, 0.125, 0.1875) + labelColumn * cellTwips;
        const double top = LabelEdge(row, 1, 0, 0.5) + rowTwips;
        const StockRow& stock = expected[label];
        const std::string firstWord = stock.description.substr(0, stock.description.find(' '));
        const int page = static_cast<int>(label) / 30;
        ASSERT_TRUE(HasWordAt(words, stock.code, page, left, top)) << stock.code << " on label " << label;
        ASSERT_TRUE(HasWordAt(words, firstWord, page, left, top + rowTwips)) << firstWord << " on label " << label;
    }
    const auto isThere = [&](std::string_view code, std::string_view description) {
        return std::ranges::any_of(
            expected, [&](const StockRow& row) { return row.code == code && row.description == description; });
    };
    EXPECT_TRUE(isThere("GA-1008-GR", "Changed by hand"));
    EXPECT_TRUE(isThere("KI-9999-ZZ", "Added by hand"));
}

TEST_F(Session, FromTheStartFormToLabelsOnPaperAndBack) {
    SKIP_WITHOUT("pdftotext");
    QApplication::setKeyboardInputInterval(0);
    Start();
    EditRecords();
    auto& designer = Designer();
    PlaceItems(designer);
    ChooseLabels(designer);
    BuildQuery(designer);
    LoadQuery(designer);
    EXPECT_EQ(user.messages, (std::vector<std::string>{}));

    user.chosen = folder.File("LABELS.PDF");
    PressShortcut(designer, Qt::Key_R);
    CheckLabels(folder.File("LABELS.PDF"));

    PressShortcut(designer, Qt::Key_X);
    Click(Named<QPushButton>(StartForm(), "cmdClose"));
    EXPECT_TRUE(Ends());
}

}  // namespace
}  // namespace quillform

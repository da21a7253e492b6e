// The start form by mouse and keys.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <filesystem>

#include "ScriptedUser.h"
#include "desktop/Driver.h"
#include "dialogs/StockScene.h"
#include "dialogs/frmStockCodeTable.h"

namespace quillform::dialogs {
namespace {

class StockCodeTable : public testing::Test {
protected:
    void Open(DBEngine& by) {
        form = std::make_unique<frmStockCodeTable>(scene.Path(), user, by);
        QObject::connect(form.get(), &frmStockCodeTable::Unloaded, [this](bool byReports) { unloaded = byReports; });
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        QTest::qWait(1);
    }
    void Open() { Open(*scene.engine); }
    QLineEdit& Box(int index) { return Named<QLineEdit>(*form, ("txtFields_" + std::to_string(index)).c_str()); }
    QPushButton& Button(const char* name) { return Named<QPushButton>(*form, name); }
    void ClickOn(const char* name) { Click(Named<QAbstractButton>(*form, name)); }
    std::string Caption() { return Named<QLabel>(*form, "caption").text().toStdString(); }
    void Retype(int index, const char* text) {
        Box(index).setFocus();
        Box(index).selectAll();
        *text ? Type(text) : Press(Qt::Key_Delete);
    }
    std::string LastMessage() const { return user.messages.empty() ? std::string() : user.messages.back(); }

    StockScene scene;
    ScriptedUser user;
    std::unique_ptr<frmStockCodeTable> form;
    std::optional<bool> unloaded;
};

TEST_F(StockCodeTable, ShowsRecordsAndCountsThemFromOne) {
    Open();
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Stock Code Table"));
    EXPECT_EQ(Caption(), "Record: 1");
    EXPECT_EQ(Box(0).text(), QStringLiteral("C1"));
    EXPECT_EQ(Box(3).text(), QStringLiteral("1.5"));
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Caption(), "Record: 2");
    ClickOn("last");
    EXPECT_EQ(Caption(), "Record: 3");
    ClickOn("next");
    EXPECT_EQ(Caption(), "Record: 3");
    Press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(Caption(), "Record: 1");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

/// Notes the pointer that stands over a database while it is opened.
class PointerEngine final : public DBEngine {
public:
    explicit PointerEngine(DBEngine& engine) : engine_(engine) {}
    std::unique_ptr<Database> OpenDatabase(std::string_view path, Access access) override {
        const QCursor* const pointer = QGuiApplication::overrideCursor();
        waits = pointer != nullptr && pointer->shape() == Qt::WaitCursor;
        return engine_.OpenDatabase(path, access);
    }
    std::unique_ptr<Database> CreateDatabase(std::string_view path, DatabaseVersion version) override {
        return engine_.CreateDatabase(path, version);
    }
    bool waits = false;

private:
    DBEngine& engine_;
};

TEST_F(StockCodeTable, AnHourglassStandsOverWorkAndGoesWithIt) {
    PointerEngine engine(*scene.engine);
    Open(engine);
    EXPECT_TRUE(engine.waits);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    engine.waits = false;
    std::filesystem::remove(scene.Path());
    ClickOn("cmdRefresh");  // fails
    EXPECT_TRUE(engine.waits);
    EXPECT_EQ(user.messages.size(), 1u);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(Caption(), "Record: 1");  // what was open stays
}

TEST_F(StockCodeTable, ARecordIsChangedAddedAndDeletedByKeys) {
    Open();
    Retype(2, "12");
    Press(Qt::Key_Return);
    EXPECT_EQ(scene.Stored()[0], "C1 12 1.5");

    Press(Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Caption() == "New record"; }));
    Type("NEW CODE OF 20 LETTERS");  // the box takes fifteen
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    Type("5");
    Press(Qt::Key_Tab);
    Type("$1,000.50");
    Press(Qt::Key_U, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Caption() == "Record: 4"; }));
    EXPECT_EQ(scene.Stored().back(), "NEW CODE OF 20  5 1000.5");

    Press(Qt::Key_D, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Caption() == "Record: 3"; }));
    EXPECT_EQ(scene.Stored().size(), 3u);
    EXPECT_EQ(LastMessage(), "");
}

TEST_F(StockCodeTable, ADataErrorKeepsWhatWasTypedAndPutsThePointerBack) {
    Open();
    Retype(2, "abc");
    ClickOn("next");
    EXPECT_EQ(LastMessage(),
              "Data error event hit err:The value \"abc\" can't be stored in field \"Quantity On Hand\" of type Long.");
    EXPECT_EQ(Caption(), "Record: 1");
    EXPECT_EQ(Box(2).text(), QStringLiteral("abc"));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);

    ClickOn("cmdClose");  // the question is answered with No
    EXPECT_EQ(user.questions.size(), 1u);
    ClickOn("frmReports");
    EXPECT_EQ(unloaded, std::nullopt);
    EXPECT_TRUE(form->isVisible());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Box(2).text(), QStringLiteral("10"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(unloaded, false);
}

TEST_F(StockCodeTable, LeavingStoresTheRecord) {
    for (const auto& [button, byReports] : {std::pair("cmdClose", false), {"frmReports", true}}) {
        Open();
        Retype(4, button);
        ClickOn(button);
        EXPECT_EQ(unloaded, byReports);
        Open();
        EXPECT_EQ(Box(4).text(), QString::fromLatin1(button).left(7));
    }
}

TEST_F(StockCodeTable, ALongerStoredTextIsNeitherCutNorStored) {
    scene.engine->OpenDatabase(scene.Path())
        ->Execute(
            "UPDATE [Stock Code Table] SET [Stock Code] = 'FIFTEEN LETTERS'"
            " WHERE [Stock Code] = 'C2'");
    Open();
    ClickOn("next");
    EXPECT_EQ(Box(0).text(), QStringLiteral("FIFTEEN LETTERS"));
    ClickOn("next");
    ClickOn("previous");
    EXPECT_EQ(Box(0).text(), QStringLiteral("FIFTEEN LETTERS"));
    EXPECT_TRUE(user.messages.empty());
}

TEST_F(StockCodeTable, AnEmptyTableTakesARecord) {
    scene.engine->OpenDatabase(scene.Path())->Execute("DELETE * FROM [Stock Code Table]");
    Open();
    EXPECT_EQ(Caption(), "No records");
    EXPECT_FALSE(Box(0).isEnabled());
    EXPECT_FALSE(Button("cmdDelete").isEnabled());
    EXPECT_FALSE(Named<QToolButton>(*form, "first").isEnabled());
    ClickOn("cmdAdd");
    Type("ONE");
    ClickOn("cmdRefresh");
    EXPECT_EQ(Caption(), "Record: 1");
    EXPECT_EQ(scene.Stored(), (std::vector<std::string>{"ONE  "}));
    EXPECT_TRUE(user.messages.empty());
}

TEST_F(StockCodeTable, WithoutADatabaseTheReportsOpenAllTheSame) {
    std::filesystem::remove(scene.Path());
    Open();
    EXPECT_TRUE(LastMessage().starts_with("Data error event hit err:")) << LastMessage();
    EXPECT_EQ(Caption(), "No records");
    ClickOn("cmdAdd");
    ClickOn("cmdRefresh");
    EXPECT_EQ(user.messages.size(), 3u);
    ClickOn("frmReports");
    EXPECT_EQ(unloaded, true);
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(StockCodeTable, AReadOnlyDatabaseIsLookedAt) {
    ReadingEngine reading(*scene.engine);
    Open(reading);
    EXPECT_TRUE(Box(0).isReadOnly());
    Retype(0, "X");
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Caption(), "Record: 2");
    EXPECT_EQ(LastMessage(), "");
    ClickOn("cmdDelete");
    EXPECT_NE(LastMessage().find("reading only"), std::string::npos) << LastMessage();
    ClickOn("cmdClose");
    EXPECT_EQ(unloaded, false);
}

}  // namespace
}  // namespace quillform::dialogs

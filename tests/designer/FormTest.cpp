// The main form by mouse and keys.

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

#include "designer/FormScene.h"
#include "support/frmSizeForm.h"

namespace quillform::designer {
namespace {

using testing::FormScene;

class Form : public FormScene {};

TEST_F(Form, MovesAnItemByDragging) {
    struct Case {
        const char* name;
        int scrollColumns, scrollRows;
        double toX, toY;  // where an item at column 20, row 5 is let go that was held at (2, 0.5)
        float left, top;
    };
    const Case cases[] = {
        {"on the grid", 0, 0, 30, 8.5, 28, 8},
        {"3.4 cells right of a line", 0, 0, 25.375, 8.5, 23, 8},
        {"a half goes down", 0, 0, 25.5, 9, 23, 8},
        {"beyond the half", 0, 0, 25.625, 9.0625, 24, 9},
        {"scrolled", 10, 4, 7, 2.5, 15, 6},
        {"off the page", 0, 0, 0.5, 0.25, -2, 0},
        {"outside the viewport", 0, 0, 30, 21, 20, 5},
        {"over the menu", 0, 0, 30, -3, 20, 5},
    };
    Open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        form->Surface().ClearLayout();
        Add(20, 5, 10);
        form->Surface().ScrollTo(c.scrollColumns, c.scrollRows);
        Drag(22 - c.scrollColumns, 5.5 - c.scrollRows, c.toX, c.toY);
        EXPECT_EQ(Item(1).Left, c.left);
        EXPECT_EQ(Item(1).Top, c.top);
        EXPECT_EQ(Pic(1).box.left, static_cast<double>(c.left) - c.scrollColumns);
        EXPECT_EQ(form->Surface().intSelected, 1);
    }
}

TEST_F(Form, AnItemThatIsHeldAtAnEdgeScrolls) {
    Open();
    Add(20, 5, 10);
    const auto& down = Named<QScrollBar>(*form, "VScroll1");
    const auto& across = Named<QScrollBar>(*form, "HScroll1");
    const auto rests = [&] {
        const QPoint before(across.value(), down.value());
        QTest::qWait(450);
        return QPoint(across.value(), down.value()) == before;
    };
    Press(22, 5.5);
    Move(22, 19.75);
    EXPECT_TRUE(QTest::qWaitFor([&] { return down.value() >= 3; }));
    EXPECT_EQ(across.value(), 0);
    Move(22, 10.5);
    EXPECT_TRUE(rests()) << "the mouse came back";
    Move(22, 23);
    EXPECT_TRUE(QTest::qWaitFor([&] { return down.value() == down.maximum(); })) << "beyond the edge";
    Move(75.5, 10.5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return across.value() >= 2; }));
    Release(75.5, 10.5);
    EXPECT_TRUE(rests()) << "the item was let go";
    EXPECT_EQ(Item(1).Top, 10 + down.value());
    EXPECT_EQ(Item(1).Left, 73 + across.value());
    Press(75.5, 10.5);
    Release(75.5, 10.5);
    EXPECT_TRUE(rests());
    Click(40, 19.75);
    EXPECT_TRUE(rests()) << "nothing is held";
}

TEST_F(Form, DropsAnItemOnAnother) {
    Open();
    Add(0, 0, 10, "lower");
    Add(30, 5, 10, "upper");
    Drag(2, 0.5, 34, 5.5);
    EXPECT_EQ(Item(1).Left, 32);
    EXPECT_EQ(Item(1).Top, 5);
    EXPECT_EQ(Item(2).Left, 30);
    Click(35, 5.5);  // the one created later lies above
    EXPECT_EQ(form->Surface().intSelected, 2);
}

TEST_F(Form, SizesAnItemAtItsRightEdge) {
    Open();
    Add(10, 2, 10);
    Move(12, 2.5);
    EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
    Move(19.5, 2.5);
    EXPECT_EQ(View().cursor().shape(), Qt::SizeHorCursor);
    Press(19.5, 2.5);
    Move(26.875, 9);
    EXPECT_TRUE(Named<QLabel>(*form, "StatusItem").text().contains("\"Text\""));  // and nothing that lies there
    Release(26.875, 9);
    EXPECT_EQ(Item(1).Length, 16);
    EXPECT_EQ(Pic(1).box.width, 16);
    EXPECT_EQ(Item(1).Left, 10);
    Drag(25.5, 2.5, 5, 2.5);
    EXPECT_EQ(Item(1).Length, 1);
    Move(40, 9);
    EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Form, AnotherButtonShowsTheOptionsOfDataItems) {
    Open();
    Add(0, 0, 10, "data", 12);
    Add(0, 2, 10, "text", 0);
    Add(0, 4, 10, "date", 9001);
    Click(2, 2.5, Qt::RightButton);
    Click(2, 4.5, Qt::RightButton);
    EXPECT_EQ(form->Surface().intSelected, 3);
    shown.clear();
    Click(2, 0.5, Qt::RightButton);
    EXPECT_EQ(shown, (std::vector<std::string>{"fieldOptions"}));
    EXPECT_EQ(layout.intOptionItem, 1);
}

TEST_F(Form, ASecondPressInADoubleClicksTimeIsAPress) {
    Open();
    Add(10, 4, 20);
    shown.clear();
    DoubleClick(12, 4.5, Qt::RightButton);
    EXPECT_EQ(shown.size(), 2u);
}

TEST_F(Form, AKeyDeletesTheSelectedItemOnce) {
    Open();
    Add(0, 0, 10);
    Add(0, 2, 10);
    Key(Qt::Key_Delete);
    EXPECT_EQ(layout.Fields.Count(), 2);
    Click(2, 0.5);
    Key(Qt::Key_Delete);
    Key(Qt::Key_Delete);
    EXPECT_EQ(layout.Fields.Count(), 1);
    EXPECT_EQ(form->Surface().Pic().Find(1), nullptr);
}

TEST_F(Form, KeysWalkMoveAndWiden) {
    Open();
    Add(30, 0, 10);
    Add(5, 2, 10, "data", 7);
    View().setFocus();
    Key(Qt::Key_Tab);
    EXPECT_EQ(form->Surface().intSelected, 1);
    Key(Qt::Key_Tab);
    EXPECT_EQ(form->Surface().intSelected, 2);
    Key(Qt::Key_Right);
    Key(Qt::Key_Down);
    Key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(Item(2).Left, 6);
    EXPECT_EQ(Item(2).Top, 3);
    EXPECT_EQ(Item(2).Length, 11);
    shown.clear();
    Key(Qt::Key_Return);
    EXPECT_EQ(shown, (std::vector<std::string>{"fieldOptions"}));
    Key(Qt::Key_Tab);
    EXPECT_FALSE(View().hasFocus());  // the last item lets the focus go
}

TEST_F(Form, SwatchesColorTheChosenTarget) {
    struct Case {
        const char* target;
        int foreColor, backColor;
    };
    const Case cases[] = {{nullptr, 14, 15}, {"Toolbar1_1", 0, 14}, {"Toolbar1_2", 14, 15}};
    Open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.target ? c.target : "neither");
        form->Surface().ClearLayout();
        Add(0, 0, 10);
        if (c.target) quillform::Click(Control(c.target));
        quillform::Click(Control("ColorPic14"));  // nothing is selected yet
        EXPECT_EQ(Item(1).FontForeColor, 0);
        Click(2, 0.5);
        quillform::Click(Control("ColorPic14"));
        EXPECT_EQ(Item(1).FontForeColor, c.foreColor);
        EXPECT_EQ(Item(1).FontBackColor, c.backColor);
    }
}

TEST_F(Form, PaintsItemsInTheirColors) {
    Open();
    Add(10, 4, 10, "").FontBackColor = 12;
    form->Surface().ShowItems();
    const QImage image = View().grab().toImage();
    const QPointF pixel(15 * View().CellSize().width(), 4.5 * View().CellSize().height());
    const auto at = [&](QPointF place) { return image.pixelColor((place * image.devicePixelRatio()).toPoint()); };
    EXPECT_EQ(at(pixel), QColor(255, 0, 0));
    EXPECT_EQ(at(pixel + QPointF(View().CellSize().width() * 20 + 3, 3)), QColor(Qt::white));
}

TEST_F(Form, ToolbarsShowTheItemAndChangeIt) {
    struct Case {
        const char* alignment;
        bool bold, italic, underline;
    };
    const Case cases[] = {{"L", false, false, false}, {"C", true, false, true}, {"R", false, true, false}};
    Open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.alignment);
        form->Surface().ClearLayout();
        clssFields& item = Add(0, 0, 10);
        item.FontAllignment = c.alignment;
        item.FontBold = c.bold;
        item.FontItalic = c.italic;
        item.FontUnderline = c.underline;
        Click(2, 0.5);
        EXPECT_EQ(IsDown("Toolbar2_1"), item.FontAllignment == "L");
        EXPECT_EQ(IsDown("Toolbar2_2"), item.FontAllignment == "C");
        EXPECT_EQ(IsDown("Toolbar2_3"), item.FontAllignment == "R");
        EXPECT_EQ(IsDown("Toolbar3_0_1"), c.bold);
        EXPECT_EQ(IsDown("Toolbar3_1_1"), c.italic);
        EXPECT_EQ(IsDown("Toolbar3_2_1"), c.underline);
        for (const char* button : {"Toolbar2_3", "Toolbar3_0_1", "Toolbar3_1_1", "Toolbar3_2_1"})
            quillform::Click(Control(button));
        EXPECT_EQ(item.FontAllignment, "R");
        EXPECT_EQ(item.FontBold, !c.bold);
        EXPECT_EQ(item.FontItalic, !c.italic);
        EXPECT_EQ(item.FontUnderline, !c.underline);
    }
}

TEST_F(Form, KeysOfEveryOfficeProgramSetTheStyle) {
    Open();
    Add(0, 0, 10);
    Click(2, 0.5);
    Key(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Item(1).FontBold; }));
    Key(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Item(1).FontItalic; }));
    Key(Qt::Key_U, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Item(1).FontUnderline; }));
    Key(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Item(1).FontBold; }));
}

TEST_F(Form, ADarkDesktopLightensTheButtonsLines) {
    Open();
    const auto brightest = [&](const char* name) {
        const QImage icon = Named<QToolButton>(*form, name).icon().pixmap(24).toImage();
        int most = 0;
        for (int y = 0; y < icon.height(); ++y)
            for (int x = 0; x < icon.width(); ++x)
                if (icon.pixelColor(x, y).alpha() > 200) most = std::max(most, icon.pixelColor(x, y).lightness());
        return most;
    };
    EXPECT_LT(brightest("Toolbar2_1"), 100);
    QPalette dark;
    dark.setColor(QPalette::ButtonText, Qt::white);
    form->setPalette(dark);
    for (const char* name : {"Toolbar2_1", "Toolbar3_0_1", "Toolbar3_1_1"}) EXPECT_GT(brightest(name), 200) << name;
}

TEST_F(Form, ScrollBarsAndWheelMoveThePictures) {
    Open();
    Add(40, 30, 10);
    auto& across = Named<QScrollBar>(*form, "HScroll1");
    auto& down = Named<QScrollBar>(*form, "VScroll1");
    EXPECT_EQ(across.maximum(), 26);
    EXPECT_EQ(down.maximum(), 46);
    across.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    down.triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(Pic(1).box.left, 39);
    EXPECT_EQ(Pic(1).box.top, -16);
    const QPointF middle(100, 100);
    QWheelEvent wheel(middle, View().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&View(), &wheel);
    EXPECT_EQ(down.value(), 43);
    View().setFocus();
    Key(Qt::Key_PageUp);
    EXPECT_EQ(down.value(), 24);
    Key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(across.value(), 0);
}

TEST_F(Form, OrientationTurnsThePage) {
    Open();
    EXPECT_TRUE(IsDown("Toolbar4_2"));
    quillform::Click(Control("Toolbar4_1"));
    EXPECT_EQ(layout.settings.intOrientation, 0);
    EXPECT_EQ(Named<QScrollBar>(*form, "HScroll1").maximum(), 56);
    EXPECT_EQ(Named<QScrollBar>(*form, "VScroll1").maximum(), 31);
    Key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(layout.settings.intOrientation, 1);
    EXPECT_TRUE(IsDown("Toolbar4_1"));  // a new layout leaves the button as it was
    EXPECT_TRUE(printer.isLandscape);
    Open();
    EXPECT_TRUE(IsDown("Toolbar4_1"));  // and so does a new start of the form
}

TEST_F(Form, AnEnvelopeNarrowsTheViewportAndItsBar) {
    Open();
    inReportOptions = [this] { layout.settings.intPaperSize = 20; };
    const double cell = View().CellSize().width();
    form->findChild<QAction*>("Edt_0")->trigger();
    EXPECT_EQ(View().width(), 49 * cell);
    EXPECT_EQ(Named<QScrollBar>(*form, "HScroll1").width(), View().width());
    EXPECT_EQ(Named<QScrollBar>(*form, "HScroll1").maximum(), 0);
    EXPECT_EQ(View().CellSize().width(), cell);
}

TEST_F(Form, ALargerWindowShowsLargerCells) {
    Open();
    Add(20, 5, 10);
    const QSizeF before = View().CellSize();
    form->resize(form->width() * 2, form->height() * 2);
    QTest::qWait(1);
    EXPECT_GT(View().CellSize().width(), before.width());
    EXPECT_EQ(View().width() / View().CellSize().width(), 76);
    Drag(22, 5.5, 32, 8.5);
    EXPECT_EQ(Item(1).Left, 30);
}

TEST_F(Form, ASmallerWindowShowsSmallerCellsAndAllOfThem) {
    Open();
    form->resize(form->width(), 10);
    QTest::qWait(1);
    EXPECT_EQ(View().CellSize().width(), 5);
    EXPECT_LE(form->height(), 340);  // of a small screen at double scale
    EXPECT_TRUE(form->rect().contains(QRect(View().mapTo(form.get(), QPoint()), View().size())));
}

TEST_F(Form, StaysOnAScreenThatIsTooSmallForIt) {
    QWidget large;
    const QRect screen = large.screen()->availableGeometry();
    large.resize(screen.size() + QSize(200, 100));
    SizeForm(large);
    EXPECT_TRUE(screen.contains(large.geometry()));
    EXPECT_GT(large.y(), screen.top());  // its title stands above
    EXPECT_GT(large.height(), screen.height() * 9 / 10);
}

TEST_F(Form, StatusLineNamesItemAndPlace) {
    Open();
    Add(12, 6, 20, "Stock Code", 3);
    form->Surface().ScrollTo(6, 3);
    Move(9, 3.5);
    EXPECT_EQ(Named<QLabel>(*form, "StatusItem").text(), "\"Stock Code\": data field, 20 columns wide, Courier New 10");
    EXPECT_EQ(Named<QLabel>(*form, "StatusPlace").text(), "Column 15, row 6  (1.25 x 1.08 in)");
    Move(2, 1);
    EXPECT_EQ(Named<QLabel>(*form, "StatusItem").text(), "");
    for (const auto& [key, held] :
         {std::pair(Qt::Key_Delete, Qt::NoModifier), std::pair(Qt::Key_N, Qt::ControlModifier)}) {
        Add(12, 6, 20);
        Click(7, 3.5);
        EXPECT_NE(Named<QLabel>(*form, "StatusItem").text(), "");
        Key(key, held);
        EXPECT_EQ(Named<QLabel>(*form, "StatusItem").text(), "");
    }
}

TEST_F(Form, EveryControlHasANameAndATip) {
    Open();
    for (const QAbstractButton* button : Control("ColorPic0").parentWidget()->findChildren<QAbstractButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0) << button->objectName().toStdString();
    }
}

}  // namespace
}  // namespace quillform::designer

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "desktop/Driver.h"
#include "support/TwipScale.h"
#include "support/frmKeyFilters.h"
#include "support/frmSizeForm.h"

namespace quillform {
namespace {

/// A box on a form with a default button, the way the filters are used.
struct Form {
    QDialog dialog;
    QLineEdit box{&dialog};
    QLineEdit other{&dialog};
    QPushButton save{&dialog};
    int saves = 0;

    Form() {
        save.setDefault(true);
        other.move(0, 40);
        save.move(0, 80);
        QObject::connect(&save, &QPushButton::clicked, &dialog, [this] { ++saves; });
        dialog.show();
        (void)QTest::qWaitForWindowActive(&dialog);
        box.setFocus();
    }
};

TEST(NumberKeyFilter, TakesDigitsOnly) {
    Form form;
    FilterNumberKeys(form.box);
    Type("1a2 b.-3\xC3\xA4");
    EXPECT_EQ(form.box.text(), "123");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(form.box.text(), "12");
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(form.saves, 0) << "Enter must not reach the default button";
    QApplication::clipboard()->setText("4x");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.box.text(), "124x") << "a paste isn't typed";
    Press(Qt::Key_Home);
    Press(Qt::Key_Delete);
    EXPECT_EQ(form.box.text(), "24x");
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(form.box.selectedText(), "24x");
}

TEST(NumberKeyFilter, SeesInputMethodsToo) {
    Form form;
    FilterNumberKeys(form.box);
    for (const char* text : {"x", "5"}) {
        QInputMethodEvent event;
        event.setCommitString(QString::fromLatin1(text));
        QApplication::sendEvent(&form.box, &event);
    }
    EXPECT_EQ(form.box.text(), "5");
}

TEST(NumberKeyFilter, SelectsTheTextWithTheFocus) {
    Form form;
    FilterNumberKeys(form.other);
    form.other.setText("  12 ");
    Press(Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_EQ(form.other.selectedText(), "12");
    EXPECT_EQ(form.other.text(), "12");
    form.box.setFocus();
    Click(form.other);
    QApplication::processEvents();
    EXPECT_EQ(form.other.selectedText(), "12") << "a click selects as well";
}

TEST(SelectAllText, LeavesOtherControlsAlone) {
    QPushButton button("  x ");
    SelectAllText(&button);
    SelectAllText(nullptr);
    EXPECT_EQ(button.text(), "  x ");
}

TEST(NoEnterKey, DropsEnterAlone) {
    Form form;
    Press(Qt::Key_Return);
    EXPECT_EQ(form.saves, 1) << "without the filter Enter presses the default button";
    FilterEnterKey(form.box);
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter);
    Type("a 1");
    EXPECT_EQ(form.saves, 1);
    EXPECT_EQ(form.box.text(), "a 1");
}

TEST(SizeForm, PutsFormsInTheMiddle) {
    QWidget form;
    form.resize(400, 300);
    SizeForm(form);
    const QRect screen = form.screen()->availableGeometry();
    EXPECT_EQ(form.size(), QSize(400, 300));
    EXPECT_LE((form.geometry().center() - screen.center()).manhattanLength(), 2);
    EXPECT_EQ(form.property("Tag").toString(), "[SIZE]:06000;04500");
    form.resize(500, 300);
    SizeForm(form);
    EXPECT_EQ(form.property("Tag").toString(), "[SIZE]:06000;04500") << "the base size is that of the first call";
    EXPECT_EQ(form.width(), 500);
}

TEST(SizeForm, MovesWhereItIsTold) {
    QWidget form;
    form.resize(400, 300);
    FormWish wish;
    wish.left = 1500;
    wish.top = 750;
    wish.width = 3000;
    wish.boolScale = false;
    wish.boolCenter = false;
    SizeForm(form, wish);
    const QPoint corner = form.screen()->availableGeometry().topLeft();
    EXPECT_EQ(form.geometry(), QRect(corner + QPoint(100, 50), QSize(200, 300)));
}

}  // namespace
}  // namespace quillform

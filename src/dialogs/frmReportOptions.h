#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "dialogs/LabelList.h"
#include "dialogs/ReportOptions.h"
#include "dialogs/frmMeasureBoxes.h"
#include "model/DataAccess.h"
#include "model/Layout.h"
#include "model/UserInterface.h"

class QButtonGroup;
class QCheckBox;
class QKeyEvent;
class QLabel;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace quillform::dialogs {

/// "Custom Report Options": what a run does with its output. Save stores all five tabs in the layout's settings, or
/// tells which number can't be stored and stays open; leaving in any other way stores nothing.
class frmReportOptions final : public QDialog {
    Q_OBJECT

public:
    /// `labelStyles` shows the form for label styles over the owner until it is closed; without it "Labels" is off.
    /// The others outlive the form.
    frmReportOptions(Layout& layout, UserInterface& user, DBEngine& engine,
                     std::function<void(QWidget& owner)> labelStyles, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using GroupBoxes = std::array<QLineEdit*, groupCaptions.size()>;

    void MakeParts();
    void LayOut();
    QWidget* OutputTypeTab();
    QWidget* GroupingTab();
    QWidget* GroupFrame(std::size_t group);
    QWidget* DatabaseTab();
    QWidget* PaperSizeTab();
    QWidget* LabelTypeTab();
    QWidget* MakePicture1();
    void Connect();
    void TurnTabs(int steps);

    void Form_Load();
    void Form_Activate() { FillLabelList(); }
    void Database_Change(std::size_t Index);
    void RptOpt_Click(int Index);
    void lstLabels_Click();
    void cmdBrowse_Click();
    void cmdLabels_Click();
    bool NumSpc_KeyDown(const QKeyEvent& key);
    void SaveCmd_Click();
    void XitCmd_Click() { reject(); }
    void FillLabelList();

    OptionControls Controls() const;
    void ShowControls(const OptionControls& controls);
    void ShowMeasures(const MeasureTexts& texts);
    void OfferAllOutputs(bool offered);
    void ClickLabelsSoon();
    int SelectedLabel() const;
    void SelectLabel(int row);
    void ShowHint();
    void GoTo(const std::string& box);

    Layout& layout_;
    UserInterface& user_;
    std::function<void(QWidget&)> labelStyles_;
    LabelList labels_;
    bool isLabelClickDue_ = false;

    // Owned by the form.
    QTabWidget* SSTab1_;
    QButtonGroup *RptOpt_, *optJoin_, *optPaperSize_;  // ids are the indexes
    QCheckBox* chkDisplayOption_;
    std::array<QCheckBox*, groupCaptions.size()> Chk_{};
    GroupBoxes NumSpc_{}, CharChange_{};
    std::array<QLineEdit*, databaseBoxes> Database_{};
    MeasureBoxes Custom_{};
    QListWidget* lstLabels_;
    QLabel* hint_;
    QPushButton *cmdLabels_, *cmdBrowse_, *SaveCmd_, *XitCmd_;
};

}  // namespace quillform::dialogs

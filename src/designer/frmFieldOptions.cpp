#include "designer/frmFieldOptions.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <span>

#include "platform/Text.h"
#include "support/frmControls.h"
#include "support/frmSizeForm.h"
#include "support/frmText.h"

namespace quillform::designer {

namespace {

struct Flag {
    std::size_t box;  ///< index of the check box
    const char* caption;
    bool clssFields::*property;
};

/// In the order in which they are loaded and stored.
constexpr Flag flags[] = {
    {0, "Sub-Total &Primary Sort", &clssFields::SubTotalFlag1},
    {5, "Sub-Total for &Secondary Sort", &clssFields::SubTotalFlag2},
    {1, "&Grand Total", &clssFields::GrandTotalFlag},
    {2, "P&rimary Sort", &clssFields::PrimarySort},
    {3, "S&econdary Sort", &clssFields::SecondarySort},
    {4, "&Third Level Sort", &clssFields::TriarySort},
    {6, "Suppress D&uplicates", &clssFields::SuppressDuplicate},
    {7, "&Hide Field/Text", &clssFields::SuppressDetails},
};
constexpr std::size_t sortBoxes[] = {2, 3, 4};
constexpr std::size_t totalBoxes[] = {0, 5, 1, 6, 7};

const Flag& FlagOf(std::size_t box) {
    for (const Flag& flag : flags)
        if (flag.box == box) return flag;
    return flags[0];
}

}  // namespace

frmFieldOptions::frmFieldOptions(Layout& layout, QWidget* parent) : QDialog(parent), layout_(layout) {
    setObjectName(QStringLiteral("frmFieldOptions"));
    setWindowTitle(QStringLiteral("Sorting/Totalling Options"));

    for (const Flag& flag : flags) {
        auto* const box = new QCheckBox(QString::fromLatin1(flag.caption));
        box->setObjectName(QStringLiteral("Chk_%1").arg(flag.box));
        Chk_[flag.box] = box;
    }
    const auto frame = [this](const char* caption, std::span<const std::size_t> boxes) {
        auto* const group = new QGroupBox(QString::fromLatin1(caption));
        auto* const rows = new QVBoxLayout(group);
        for (const std::size_t box : boxes) rows->addWidget(Chk_[box]);
        rows->addStretch(1);
        return group;
    };
    auto* const item = new QLabel(ToQt(Trim(layout.Fields.Item(layout.intOptionItem).Text)));
    item->setTextFormat(Qt::PlainText);
    QFont bold = item->font();
    bold.setBold(true);
    item->setFont(bold);

    auto* const frames = new QHBoxLayout;
    frames->addWidget(frame("Sorting", sortBoxes));
    frames->addWidget(frame("Totalling and Printing", totalBoxes));
    auto* const DoneCmd = NewButton("DoneCmd", "&Done");
    DoneCmd->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(DoneCmd);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(item);
    rows->addLayout(frames);
    rows->addLayout(buttons);
    connect(DoneCmd, &QPushButton::clicked, this, &frmFieldOptions::DoneCmd_Click);
    Form_Load();
}

void frmFieldOptions::Form_Load() {
    resize(sizeHint());
    SizeForm(*this);
    const clssFields& item = layout_.Fields.Item(layout_.intOptionItem);
    for (const Flag& flag : flags) Chk_[flag.box]->setChecked(item.*flag.property);
    // A sort level belongs to one item of the layout; who holds it can give it up.
    for (const clssFields& other : layout_.Fields) {
        if (&other == &item) continue;
        for (const std::size_t box : sortBoxes) {
            if (!(other.*FlagOf(box).property)) continue;
            Chk_[box]->setEnabled(false);
            Chk_[box]->setToolTip(QStringLiteral("Taken by \"%1\"").arg(ToQt(Trim(other.Text))));
        }
    }
}

void frmFieldOptions::DoneCmd_Click() {
    clssFields& item = layout_.Fields.Item(layout_.intOptionItem);
    for (const Flag& flag : flags) item.*flag.property = Chk_[flag.box]->isChecked();
    accept();
}

}  // namespace quillform::designer

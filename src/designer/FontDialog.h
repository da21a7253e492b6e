#pragma once

#include <QDialog>
#include <optional>

#include "designer/ScreenFonts.h"

class QCheckBox;
class QComboBox;
class QListWidget;

namespace quillform::designer {

/// The font dialog: family, style and size, of the fonts that screen and printer both have. No underline and no colour.
class FontDialog : public QDialog {
public:
    FontDialog(ScreenFonts& fonts, const FontSpec& font, QWidget* parent);

    /// The font as it is set now; underline as it was given.
    FontSpec Chosen() const;

    /// The font that the user chose, empty on a cancel.
    static std::optional<FontSpec> Choose(ScreenFonts& fonts, const FontSpec& font, QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    class Sample;

    void FillFamilies();
    void ShowSample();

    FontSpec given_;
    ScreenFonts& fonts_;
    QListWidget* family_;
    QComboBox* size_;
    QCheckBox* bold_;
    QCheckBox* italic_;
    Sample* sample_;
};

}  // namespace quillform::designer

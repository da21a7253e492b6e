#include "support/frmSizeForm.h"

#include <QScreen>
#include <QVariant>

#include "support/TwipScale.h"
#include "support/frmText.h"

namespace quillform {

namespace {

constexpr const char* tagProperty = "Tag";

float Twips(int pixels) { return static_cast<float>(TwipScale::ToTwips(pixels)); }

}  // namespace

void SizeForm(QWidget& form, const FormWish& wish) {
    const QRect screen = form.screen()->availableGeometry();  // a form under the task bar is in nobody's middle
    const QRect place = form.geometry().translated(-screen.topLeft());
    const SizedForm sized =
        SizeForm({Twips(place.x()), Twips(place.y()), Twips(place.width()), Twips(place.height())},
                 FromQt(form.property(tagProperty).toString()), {Twips(screen.width()), Twips(screen.height())}, wish);
    form.setProperty(tagProperty, ToQt(sized.tag));
    const QRect wanted(TwipScale::ToPixels(sized.place.left), TwipScale::ToPixels(sized.place.top),
                       TwipScale::ToPixels(sized.place.width), TwipScale::ToPixels(sized.place.height));
    form.setGeometry(wanted.translated(screen.topLeft()));
}

}  // namespace quillform

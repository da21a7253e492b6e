#include "support/frmSizeForm.h"

#include <QScreen>
#include <QStyle>
#include <QVariant>
#include <algorithm>

#include "support/TwipScale.h"
#include "support/frmText.h"

namespace quillform {

namespace {

constexpr const char* tagProperty = "Tag";

/// A form that is larger than its screen, as on a small one at double scale, keeps its upper left corner and its title
/// there, and takes the room that there is.
QRect OnScreen(QRect place, const QRect& screen, const QWidget& form) {
    const int title = form.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    place.setSize(place.size().boundedTo(screen.size() - QSize(0, title)));
    const int top = std::max(place.top(), screen.top() + title);
    place.moveTo(std::max(place.left(), screen.left()), std::min(top, screen.bottom() + 1 - place.height()));
    return place;
}

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
    form.setGeometry(OnScreen(wanted.translated(screen.topLeft()), screen, form));
}

}  // namespace quillform

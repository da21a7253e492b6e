#include "support/frmScrollPage.h"

namespace quillform {

frmScrollPage::frmScrollPage(QWidget* page) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    setWidget(page);
    // Behind setWidget, which fills it: a tab's own ground is to be seen.
    page->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QSize frmScrollPage::sizeHint() const { return widget()->sizeHint(); }

}  // namespace quillform

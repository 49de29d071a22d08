// Curves.
#include "desktop/control_ties.h"
#include "desktop/curve_painting.h"
#include "desktop/curve_view.h"
#include "desktop/display_menu.h"

namespace ox {

void TieCurve(Curve& control, CurveView& widget) {
  widget.Follow(control);
  GivePictureMenu(control, widget, [&control, &widget] {
    return control.Data() != nullptr ? PictureOfCurve(*control.Data(), widget.window()->windowTitle())
                                     : QByteArray();
  });
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText}, [&control, &widget](Change change) {
    ShowCommon(control, widget, change);
    if (change == Change::kText) widget.update();
  });
}

}  // namespace ox

// One form for every window, as designed in forms/.
#include "desktop/forms.h"

#include <QSizeGrip>
#include <QSplitter>

#include "ui_headers.h"

namespace ox {
namespace {

struct NamedForm {
  std::string_view name;
  std::unique_ptr<QWidget> (*make)(QWidget* parent);
};

/// Names, for a screen reader, the handles that the toolkit adds and a form cannot name.
void NameHandles(QWidget& form) {
  for (QSizeGrip* grip : form.findChildren<QSizeGrip*>()) {
    grip->setAccessibleName(QStringLiteral("Fenstergröße"));
  }
  for (QSplitterHandle* handle : form.findChildren<QSplitterHandle*>()) {
    handle->setAccessibleName(QStringLiteral("Aufteilung"));
  }
}

/// A form shows columns in Courier. Where that font is missing, another font of fixed pitch takes its place.
void KeepColumns(QWidget& form) {
  for (QWidget* widget : form.findChildren<QWidget*>()) {
    QFont font = widget->font();
    if (!widget->testAttribute(Qt::WA_SetFont) || font.family() != QStringLiteral("Courier")) continue;
    font.setStyleHint(QFont::TypeWriter);
    widget->setFont(font);
  }
}

template <class Form, class Frame>
std::unique_ptr<QWidget> Make(QWidget* parent) {
  auto frame = std::make_unique<Frame>(parent);
  Form().setupUi(frame.get());
  NameHandles(*frame);
  KeepColumns(*frame);
  return frame;
}

/// Both included files are made by the build out of the forms in forms/.
constexpr NamedForm kForms[] = {
#include "ui_rows.h"
};

}  // namespace

std::unique_ptr<QWidget> MakeForm(std::string_view name, QWidget* parent) {
  for (const NamedForm& form : kForms) {
    if (form.name == name) return form.make(parent);
  }
  return nullptr;
}

}  // namespace ox

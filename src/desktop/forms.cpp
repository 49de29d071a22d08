// One form for every window, as designed in forms/.
#include "desktop/forms.h"

#include <QDialog>
#include <QMainWindow>
#include <QSizeGrip>
#include <QSplitter>
#include <array>

#include "ui_Dateiwahl.h"
#include "ui_Datenaustausch.h"
#include "ui_FirmwareOX3Verpacken.h"
#include "ui_Modem.h"
#include "ui_PowerMonitor.h"
#include "ui_Start.h"
#include "ui_UpdateproOx3.h"
#include "ui_Verbindungstest.h"
#include "ui_updatepro.h"
#include "ui_updatetab.h"

namespace ox {
namespace {

struct NamedForm {
  std::string_view name;
  std::unique_ptr<QWidget> (*make)(QWidget* parent);
};

/// Names for a screen reader what the toolkit adds by itself, and no form can name.
void NameHandles(QWidget& form) {
  for (QSizeGrip* grip : form.findChildren<QSizeGrip*>()) {
    grip->setAccessibleName(QStringLiteral("Fenstergröße"));
  }
  for (QSplitterHandle* handle : form.findChildren<QSplitterHandle*>()) {
    handle->setAccessibleName(QStringLiteral("Aufteilung"));
  }
}

template <class Form, class Frame>
std::unique_ptr<QWidget> Make(QWidget* parent) {
  auto frame = std::make_unique<Frame>(parent);
  Form().setupUi(frame.get());
  NameHandles(*frame);
  return frame;
}

constexpr std::array kForms = {
    NamedForm{"Start", Make<Ui::Start, QMainWindow>},
    NamedForm{"Verbindungstest", Make<Ui::Verbindungstest, QDialog>},
    NamedForm{"Datenaustausch", Make<Ui::Datenaustausch, QDialog>},
    NamedForm{"updatetab", Make<Ui::updatetab, QDialog>},
    NamedForm{"updatepro", Make<Ui::updatepro, QDialog>},
    NamedForm{"UpdateproOx3", Make<Ui::UpdateproOx3, QDialog>},
    NamedForm{"FirmwareOX3Verpacken", Make<Ui::FirmwareOX3Verpacken, QDialog>},
    NamedForm{"PowerMonitor", Make<Ui::PowerMonitor, QDialog>},
    NamedForm{"Modem", Make<Ui::Modem, QDialog>},
    NamedForm{"Dateiwahl", Make<Ui::Dateiwahl, QDialog>},
};

}  // namespace

std::unique_ptr<QWidget> MakeForm(std::string_view name, QWidget* parent) {
  for (const NamedForm& form : kForms) {
    if (form.name == name) return form.make(parent);
  }
  return nullptr;
}

}  // namespace ox

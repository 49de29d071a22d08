// The toolkit's file dialogue, and which kind of file the user meant.
#include "desktop/save_question.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "desktop/border.h"
#include "desktop/message_box.h"
#include "desktop/title_bar.h"
#include "desktop/window_places.h"

namespace ox {
namespace {

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString FilterOf(const FileKind& kind) {
  return ToQt(kind.name) + QStringLiteral(" (*.") + ToQt(kind.extension) + QStringLiteral(")");
}

/// Asks before a file is replaced, without keeping waiting what runs; the toolkit's own question would.
class SaveDialog : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;

  void accept() override {
    const QStringList files = selectedFiles();
    if (files.isEmpty() || !QFileInfo(files.front()).isFile()) {
      QFileDialog::accept();
      return;
    }
    const QString question =
        QStringLiteral("Die Datei %1 gibt es schon. Ersetzen?").arg(QDir::toNativeSeparators(files.front()));
    AskBeside(this, question.toStdString(), [this] { QFileDialog::accept(); });
  }
};

/// The kind that the name says, else the one that is chosen in the dialogue's list.
std::size_t KindOf(const QString& path, const QFileDialog& dialog, const std::vector<FileKind>& kinds) {
  const QString suffix = QFileInfo(path).suffix();
  const auto says = [&](const FileKind& kind) {
    return suffix.compare(ToQt(kind.extension), Qt::CaseInsensitive) == 0;
  };
  const auto named = std::ranges::find_if(kinds, says);
  if (named != kinds.end()) return static_cast<std::size_t>(named - kinds.begin());
  const auto chosen = dialog.nameFilters().indexOf(dialog.selectedNameFilter());
  return static_cast<std::size_t>(std::max<qsizetype>(chosen, 0));
}

}  // namespace

void SaveQuestion::Ask(QWidget& form, std::string_view name, const std::vector<FileKind>& kinds,
                       SaveAnswer answer) {
  auto* dialog = new SaveDialog(&form, QStringLiteral("Speichern unter"), folder_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setOption(QFileDialog::DontConfirmOverwrite);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  QStringList filters;
  for (const FileKind& kind : kinds) filters += FilterOf(kind);
  dialog->setNameFilters(filters);
  const auto complete = [dialog, kinds] {  // the extension of what the user types without one
    const auto chosen = dialog->nameFilters().indexOf(dialog->selectedNameFilter());
    dialog->setDefaultSuffix(
        ToQt(kinds.at(static_cast<std::size_t>(std::max<qsizetype>(chosen, 0))).extension));
  };
  complete();
  QObject::connect(dialog, &QFileDialog::filterSelected, dialog, complete);
  dialog->selectFile(ToQt(name));
  QObject::connect(
      dialog, &QFileDialog::fileSelected, dialog,
      [this, dialog, kinds, answer = std::move(answer)](const QString& path) {
        folder_ = QFileInfo(path).absolutePath();
        AtBorder([&] { answer(QDir::toNativeSeparators(path).toStdString(), KindOf(path, *dialog, kinds)); });
      });
  dialog->setWindowFlags(kDialogFrame);
  dialog->resize(dialog->sizeHint().boundedTo(form.screen()->availableGeometry().size() - kUsualFrame));
  dialog->open();
}

}  // namespace ox

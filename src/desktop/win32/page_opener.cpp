// What Windows has for pages, asked on a thread of its own: the answer may take seconds.
#include "desktop/page_opener.h"

#include <objbase.h>
#include <shellapi.h>

#include <QDir>
#include <QThread>
#include <memory>
#include <utility>

namespace ox {
namespace {

/// ShellExecute returns more than this when it has found a program that shows the file.
constexpr INT_PTR kLastFailure = 32;

bool Show(const std::wstring& file) {
  const bool ready = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
  const HINSTANCE answer = ShellExecuteW(nullptr, nullptr, file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  if (ready) CoUninitialize();
  return reinterpret_cast<INT_PTR>(answer) > kLastFailure;
}

}  // namespace

QString PlaceOfManual() {
  return QStringLiteral("handbuch.html");
}

void OpenPage(const QString& page, std::function<void()> failed) {
  const auto shown = std::make_shared<bool>(false);
  QThread* opener =
      QThread::create([shown, file = QDir::toNativeSeparators(page).toStdWString()] { *shown = Show(file); });
  // The answer comes to the thread of the windows, which owns the opener.
  QObject::connect(opener, &QThread::finished, opener, [opener, shown, failed = std::move(failed)] {
    if (!*shown) failed();
    opener->deleteLater();
  });
  opener->start();
}

}  // namespace ox

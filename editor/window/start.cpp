#include "editor/window/start.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "editor/qt_text.h"
#include "host/services/files.h"

namespace editor {
namespace {

using host::TextId;
using workbench::ConfigurationStore;

bool tell(const std::string& cause) {
  QMessageBox box(QMessageBox::Critical, caption(TextId::EditorTitle),
                  QString::fromStdString(cause));
  box.setTextFormat(Qt::PlainText);
  box.addButton(caption(TextId::Close), QMessageBox::AcceptRole);
  box.exec();
  return false;
}

// Whether the person wants to go on with the version before.
bool wantsKeptCopy(const ConfigurationStore& store, const std::string& cause) {
  QMessageBox box(QMessageBox::Critical, caption(TextId::EditorTitle),
                  QString::fromStdString(cause));
  box.setTextFormat(Qt::PlainText);
  QPushButton* open = nullptr;
  if (store.keptCopyOpens()) {
    const QString moment = momentOfKeptCopy(store);
    box.setInformativeText(caption(TextId::KeptCopyOffer, hostText(moment),
                                   store.damagedCopy().filename().u16string()));
    open = box.addButton(caption(TextId::OpenKeptCopy), QMessageBox::AcceptRole);
    box.setDefaultButton(open);
  } else {
    box.setInformativeText(caption(TextId::NoKeptCopy));
  }
  box.setEscapeButton(box.addButton(caption(TextId::ActionQuit), QMessageBox::RejectRole));
  box.exec();
  return open != nullptr && box.clickedButton() == open;
}

}  // namespace

QString momentOfKeptCopy(const ConfigurationStore& store) {
  const QFileInfo file(QString::fromStdU16String(host::keptCopy(store.file()).u16string()));
  return file.lastModified().toString("dd/MM/yyyy HH:mm:ss");
}

bool openAsking(workbench::Workspace& workspace, QtFrontEnd& frontEnd, std::string& cause) {
  if (workspace.open(frontEnd, cause)) return true;
  if (!workspace.isConfigurationRefused()) return tell(cause);
  if (!wantsKeptCopy(workspace.store(), cause)) return false;
  return workspace.openKeptCopy(cause) || tell(cause);
}

}  // namespace editor

// Files that the user drags from another program over a window, and drops there.

#include "platform/desktop/screen/above.h"
#include "platform/desktop/screen/qt/shown.h"
#include "platform/kernel/paths.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include <utility>

namespace platform {

namespace {

// The files of a drag. A name may be any bytes, which the URL has as they are.
std::vector<std::string> filesOf(const QMimeData &data) {
  std::vector<std::string> files;
  for (const QUrl &url : data.urls()) {
    if (!url.isLocalFile()) continue;
    const QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    if (path.startsWith('/')) files.push_back(nameOfPath(path.toStdString()));
  }
  return files;
}

// What the other program may do with its files afterwards: not to take them away, since they are only read here.
Qt::DropAction actionOf(const QDropEvent &drag) {
  for (const Qt::DropAction action : {Qt::CopyAction, Qt::LinkAction})
    if (drag.possibleActions() & action) return action;
  return Qt::IgnoreAction;
}

} // namespace

bool reportDrop(ShownWindow &window, QEvent &event) {
  const QEvent::Type type = event.type();
  if (type == QEvent::DragLeave) return true;
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
  auto &drag = static_cast<QDropEvent &>(event);
  // asked for once, and again at the drop, when some programs know better and others have gone
  std::vector<std::string> &files = window.dragged();
  if (type == QEvent::DragEnter) files.clear();
  if (type != QEvent::DragMove && window.takesFiles() && drag.mimeData())
    if (auto held = filesOf(*drag.mimeData()); !held.empty()) files = std::move(held);
  const Qt::DropAction action = files.empty() ? Qt::IgnoreAction : actionOf(drag);
  drag.setDropAction(action);
  drag.setAccepted(action != Qt::IgnoreAction);
  if (type != QEvent::Drop || !drag.isAccepted()) return true;
  const QPointF local = drag.position();
  above::take(
      FilesDropped{window.id(), window.programPoint(local, window.mapToGlobal(local)), std::exchange(files, {})});
  return true;
}

} // namespace platform

#include "platform/desktop/screen/qt/clipboard.h"

#include "platform/desktop/screen/above.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

namespace platform {

// The program's offer. Its data are fetched when another program wants them.
class ClipboardLink::Offer : public QMimeData {
 public:
  Offer(const ClipboardLink &link, const std::vector<std::string> &types, Serial serial)
      : link_(link), serial_(serial) {
    for (const std::string &type : types) types_ << QString::fromStdString(type);
  }
  QStringList formats() const override { return types_; }
  bool hasFormat(const QString &type) const override { return types_.contains(type); }

 protected:
  QVariant retrieveData(const QString &type, QMetaType) const override {
    if (!types_.contains(type)) return {};
    const auto data = above::clipboardData(type.toStdString(), serial_, !link_.closed_);
    return data ? QVariant(QByteArray(data->data(), static_cast<qsizetype>(data->size()))) : QVariant();
  }

 private:
  const ClipboardLink &link_;
  const Serial serial_;
  QStringList types_;
};

ClipboardLink::ClipboardLink() {
  connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] { changed(); });
}

void ClipboardLink::close() {
  closed_ = true;
  disconnect(QGuiApplication::clipboard(), nullptr, this, nullptr);
}

void ClipboardLink::offer(const std::vector<std::string> &types, Serial serial) {
  offer_ = serial;
  offering_ = true;
  QGuiApplication::clipboard()->setMimeData(new Offer(*this, types, serial));
  offering_ = false;
}

std::vector<std::string> ClipboardLink::types() const {
  const QMimeData *const there = QGuiApplication::clipboard()->mimeData();
  std::vector<std::string> types;
  if (there && !QGuiApplication::clipboard()->ownsClipboard())
    for (const QString &type : there->formats()) types.push_back(type.toStdString());
  return types;
}

std::optional<std::string> ClipboardLink::data(const std::string &type) const {
  const QMimeData *const there = QGuiApplication::clipboard()->mimeData();
  if (!there || QGuiApplication::clipboard()->ownsClipboard()) return std::nullopt;
  const bool isText = type.starts_with("text/plain");
  const QByteArray bytes = isText ? there->text().toUtf8() : there->data(QString::fromStdString(type));
  return bytes.toStdString();
}

// Qt also signals the program's own offers.
void ClipboardLink::changed() const {
  if (!offering_ && !QGuiApplication::clipboard()->ownsClipboard()) above::take(ClipboardTaken{offer_});
}

} // namespace platform

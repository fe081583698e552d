#include "platform/desktop/screen/qt/portal.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <unistd.h>

namespace platform {

// The bus's a(sa(us)): texts with patterns, of kind 0.
struct PortalPattern {
  uint kind = 0;
  QString pattern;
};
struct PortalFilter {
  QString text;
  QList<PortalPattern> patterns;
};

QDBusArgument &operator<<(QDBusArgument &to, const PortalPattern &pattern) {
  to.beginStructure();
  to << pattern.kind << pattern.pattern;
  to.endStructure();
  return to;
}
const QDBusArgument &operator>>(const QDBusArgument &from, PortalPattern &pattern) {
  from.beginStructure();
  from >> pattern.kind >> pattern.pattern;
  from.endStructure();
  return from;
}
QDBusArgument &operator<<(QDBusArgument &to, const PortalFilter &filter) {
  to.beginStructure();
  to << filter.text << filter.patterns;
  to.endStructure();
  return to;
}
const QDBusArgument &operator>>(const QDBusArgument &from, PortalFilter &filter) {
  from.beginStructure();
  from >> filter.text >> filter.patterns;
  from.endStructure();
  return from;
}

} // namespace platform

Q_DECLARE_METATYPE(platform::PortalPattern)
Q_DECLARE_METATYPE(platform::PortalFilter)

namespace platform {

namespace {

const char kService[] = "org.freedesktop.portal.Desktop", kObject[] = "/org/freedesktop/portal/desktop",
           kChooser[] = "org.freedesktop.portal.FileChooser", kRequest[] = "org.freedesktop.portal.Request";
constexpr std::chrono::milliseconds kBegin{2000};

std::atomic<bool> absent = false; // the bus has said so

// Patterns there regard the case of letters, names here don't: "*.wav" becomes "*.[wW][aA][vV]".
QString anyCase(const std::string &pattern) {
  QString all;
  for (const QChar character : QString::fromStdString(pattern)) {
    const QChar small = character.toLower(), capital = character.toUpper();
    all += small == capital ? QString(character) : QStringLiteral("[%1%2]").arg(small).arg(capital);
  }
  return all;
}

PortalFilter toPortal(const FileQuestion::Filter &filter) {
  PortalFilter made{QString::fromStdString(filter.text), {}};
  for (const std::string &pattern : filter.patterns)
    made.patterns.append({0, anyCase(pattern == "*.*" ? "*" : pattern)});
  return made;
}

bool isSame(const PortalFilter &a, const PortalFilter &b) {
  const auto same = [](const PortalPattern &one, const PortalPattern &other) { return one.pattern == other.pattern; };
  return a.text == b.text &&
         std::equal(a.patterns.begin(), a.patterns.end(), b.patterns.begin(), b.patterns.end(), same);
}

// The bytes of a name, whatever they are.
std::optional<std::string> pathOf(const QString &uri) {
  const QString kScheme = QStringLiteral("file://");
  const qsizetype root = uri.startsWith(kScheme) ? uri.indexOf(QLatin1Char('/'), kScheme.size()) : -1;
  if (root < 0) return std::nullopt;
  return QByteArray::fromPercentEncoding(uri.mid(root).toUtf8()).toStdString();
}

// Paths travel as bytes with their end mark.
QByteArray bytesOf(const std::string &path) { return {path.c_str(), static_cast<qsizetype>(path.size() + 1)}; }

QDBusConnection bus() { return QDBusConnection::sessionBus(); }

} // namespace

bool FilePortal::mayBeThere() {
  if (absent) return false;
  const auto valueOf = [](const char *variable) -> std::string {
    const char *const value = std::getenv(variable);
    return value ? value : "";
  };
  if (!valueOf("DBUS_SESSION_BUS_ADDRESS").empty()) return true;
  const std::string folder = valueOf("XDG_RUNTIME_DIR");
  return !folder.empty() && access((folder + "/bus").c_str(), F_OK) == 0;
}

void FilePortal::ask(unsigned id, const FileQuestion &question, const QString &parent, FileAnswered answered) {
  if (!bus().isConnected()) {
    absent = true;
    return answered({});
  }
  auto &request = requests_[id] = std::make_unique<PortalRequest>(question, std::move(answered));
  request->start(parent);
}

void FilePortal::withdraw(unsigned id) { requests_.erase(id); }

PortalRequest::PortalRequest(const FileQuestion &question, FileAnswered answered)
    : question_(question), answered_(std::move(answered)) {
  qDBusRegisterMetaType<PortalPattern>();
  qDBusRegisterMetaType<QList<PortalPattern>>();
  qDBusRegisterMetaType<PortalFilter>();
  qDBusRegisterMetaType<QList<PortalFilter>>();
}

// The service works in order: so it shows no dialog of a question that it gets to after this.
PortalRequest::~PortalRequest() {
  if (over_ || path_.isEmpty()) return;
  bus().send(QDBusMessage::createMethodCall(kService, path_, kRequest, QStringLiteral("Close")));
}

// The answer may come before the call returns: its object is known from the beginning, by the token.
void PortalRequest::start(const QString &parent) {
  static unsigned serial;
  const QString token = QStringLiteral("wq%1_%2").arg(getpid()).arg(++serial);
  const QString sender = bus().baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
  listen(QStringLiteral("%1/request/%2/%3").arg(QLatin1String(kObject), sender, token));
  connect(&limit_, &QTimer::timeout, this, [this] { giveUp(); });
  limit_.setSingleShot(true);
  limit_.start(kBegin);
  service_.setConnection(bus());
  service_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
  service_.addWatchedService(QLatin1String(kService));
  connect(&service_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { giveUp(); });

  const bool saves = question_.kind == FileQuestion::Kind::save;
  QDBusMessage call =
      QDBusMessage::createMethodCall(kService, kObject, kChooser, QLatin1String(saves ? "SaveFile" : "OpenFile"));
  call << parent << QString::fromStdString(question_.title) << options(token);
  auto *const watcher = new QDBusPendingCallWatcher(bus().asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *done) {
    called(*done);
    done->deleteLater();
  });
}

void PortalRequest::listen(const QString &path) {
  path_ = path;
  bus().connect(QLatin1String(kService), path, QLatin1String(kRequest), QStringLiteral("Response"), this,
                SLOT(respond(uint, QVariantMap)));
}

QVariantMap PortalRequest::options(const QString &token) const {
  QVariantMap options;
  options[QStringLiteral("handle_token")] = token;
  options[QStringLiteral("modal")] = true;
  if (question_.several) options[QStringLiteral("multiple")] = true;
  if (question_.kind == FileQuestion::Kind::folder) options[QStringLiteral("directory")] = true;
  if (!question_.folder.empty()) options[QStringLiteral("current_folder")] = bytesOf(question_.folder);
  if (!question_.name.empty()) options[QStringLiteral("current_name")] = QString::fromStdString(question_.name);
  QList<PortalFilter> filters;
  for (const FileQuestion::Filter &filter : question_.filters) filters.append(toPortal(filter));
  if (filters.isEmpty()) return options;
  options[QStringLiteral("filters")] = QVariant::fromValue(filters);
  if (question_.filter < question_.filters.size())
    options[QStringLiteral("current_filter")] = QVariant::fromValue(filters[static_cast<qsizetype>(question_.filter)]);
  return options;
}

void PortalRequest::called(const QDBusPendingCallWatcher &call) {
  const QDBusPendingReply<QDBusObjectPath> reply = call;
  if (over_) return;
  limit_.stop();
  if (!reply.isError()) {
    if (const QString path = reply.value().path(); path != path_) listen(path); // as old services name it
    return;
  }
  switch (reply.error().type()) {
  case QDBusError::ServiceUnknown:
  case QDBusError::UnknownInterface:
  case QDBusError::UnknownMethod:
  case QDBusError::UnknownObject: absent = true; break;
  default: break;
  }
  giveUp();
}

void PortalRequest::respond(uint response, const QVariantMap &results) {
  enum Responses { kChosen, kCancelled };
  if (response != kChosen)
    return answer(
        {response == kCancelled ? FileAnswer::Outcome::cancelled : FileAnswer::Outcome::unable, {}, {}, false});
  FileAnswer chosen;
  for (const QString &uri : results.value(QStringLiteral("uris")).toStringList())
    if (auto path = pathOf(uri)) chosen.paths.push_back(std::move(*path));
  if (!chosen.paths.empty()) chosen.outcome = FileAnswer::Outcome::chosen;
  chosen.readOnly = !results.value(QStringLiteral("writable"), true).toBool();
  const QVariant told = results.value(QStringLiteral("current_filter"));
  if (told.canConvert<QDBusArgument>()) {
    const auto filter = qdbus_cast<PortalFilter>(told);
    for (size_t i = question_.filters.size(); i-- > 0;)
      if (isSame(toPortal(question_.filters[i]), filter)) chosen.filter = i;
  }
  answer(chosen);
}

void PortalRequest::answer(const FileAnswer &answer) {
  if (!std::exchange(over_, true)) answered_(answer);
}

void PortalRequest::giveUp() {
  if (over_) return;
  bus().send(QDBusMessage::createMethodCall(kService, path_, kRequest, QStringLiteral("Close")));
  answer({});
}

} // namespace platform

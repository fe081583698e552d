// The dialog for files of the desktop itself, which a service on the session's bus shows: the portal. On Qt's thread.
#pragma once

#include "platform/desktop/screen/question.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <map>
#include <memory>

class QDBusPendingCallWatcher;

namespace platform {

// One question. Its answer is a signal, and only a slot can receive one that has a name at run time only.
class PortalRequest : public QObject {
  Q_OBJECT

 public:
  PortalRequest(const FileQuestion &question, FileAnswered answered);
  ~PortalRequest() override; // takes back a question that is open
  PortalRequest(const PortalRequest &) = delete;
  PortalRequest &operator=(const PortalRequest &) = delete;

  void start(const QString &parent);

 private slots:
  void respond(uint response, const QVariantMap &results);

 private:
  void listen(const QString &path);
  void called(const QDBusPendingCallWatcher &call);
  void answer(const FileAnswer &answer);
  void giveUp();
  QVariantMap options(const QString &token) const;

  const FileQuestion question_;
  const FileAnswered answered_;
  QString path_; // of the object that stands for the question
  QTimer limit_; // of the time that the service may take to begin
  QDBusServiceWatcher service_;
  bool over_ = false;
};

class FilePortal {
 public:
  // Whether asking may be of use; it may turn out that it is none. From any thread.
  static bool mayBeThere();

  // parent: the owner's window as the portal names it. answered: called once, if the question isn't withdrawn.
  void ask(unsigned id, const FileQuestion &question, const QString &parent, FileAnswered answered);
  void withdraw(unsigned id);
  void close() { requests_.clear(); }

 private:
  std::map<unsigned, std::unique_ptr<PortalRequest>> requests_;
};

} // namespace platform

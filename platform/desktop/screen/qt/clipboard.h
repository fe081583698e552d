// The desktop's clipboard, on Qt's thread.
#pragma once

#include "platform/desktop/screen/screen.h"

#include <QObject>

namespace platform {

class ClipboardLink : public QObject {
 public:
  ClipboardLink();
  // The program is ending, so no data are waited for any more. Data already there may go to a clipboard manager.
  void close();

  void offer(const std::vector<std::string> &types, Serial serial);
  // Types and data of another program. Both calls wait for it.
  std::vector<std::string> types() const;
  std::optional<std::string> data(const std::string &type) const;

 private:
  class Offer;
  void changed() const;

  Serial offer_ = 0;
  bool offering_ = false;
  bool closed_ = false;
};

} // namespace platform

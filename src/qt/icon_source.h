// IconSource: the picture for a row's image index.
//
// The platform hands out icon indexes; on Linux each index stands for an
// icon-theme name (IconTable: "folder", "text-x-generic", "drive-harddisk",
// ...). The picture is the desktop theme's icon of that name (or of its
// generic fallback names), else one of a few shapes drawn here (folder,
// document, drive, archive, up arrow), so rows have icons on a bare system
// without any theme. Icons are made once per index and cached.
//
// Threading: the GUI thread only.
#pragma once

#include <QHash>
#include <QIcon>
#include <QString>
#include <cstdint>
#include <functional>

namespace nxfv::qt {

class IconSource {
 public:
  // Index -> icon name; the default reads the Linux platform's icon table.
  using NameOf = std::function<QString(int32_t index)>;
  explicit IconSource(NameOf nameOf = {});

  QIcon Icon(int32_t index);
  // The drawn stand-in for an icon name (public for hosts that want the
  // same look for their own entries).
  static QIcon Drawn(const QString& iconName);
  // Whether the desktop theme is asked first (true by default); tests turn
  // it off for pictures that do not depend on the machine.
  void SetUseTheme(bool use);

 private:
  NameOf nameOf_;
  bool useTheme_ = true;
  QHash<int32_t, QIcon> cache_;
};

}  // namespace nxfv::qt

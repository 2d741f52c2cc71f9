#include "nxfv/qt/icon_source.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "nxfv/platform/linux/icon_table.h"

namespace nxfv::qt {
namespace {

enum class Shape { Document, Folder, Drive, Archive, Executable, Image, Up };

Shape ShapeOf(const QString& name) {
  if (name == QLatin1String("folder") || name.startsWith(QLatin1String("folder-")) ||
      name.startsWith(QLatin1String("user-")))
    return Shape::Folder;
  if (name.startsWith(QLatin1String("drive-")) || name.startsWith(QLatin1String("media-")))
    return Shape::Drive;
  if (name == QLatin1String("go-up")) return Shape::Up;
  if (name.startsWith(QLatin1String("image-"))) return Shape::Image;
  if (name.startsWith(QLatin1String("package-")) || name.contains(QLatin1String("zip")) || name.contains(QLatin1String("archive")) ||
      name.contains(QLatin1String("compressed")) || name.contains(QLatin1String("cab")) ||
      name.contains(QLatin1String("tar")))
    return Shape::Archive;
  if (name.contains(QLatin1String("executable"))) return Shape::Executable;
  return Shape::Document;
}

// One picture at size s (pixels), drawn in a 16-unit grid.
QPixmap Draw(Shape shape, int s) {
  QPixmap pm(s, s);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(s / 16.0, s / 16.0);
  const QPen outline(QColor(60, 60, 60), 0.8);
  p.setPen(outline);
  switch (shape) {
    case Shape::Folder: {
      QPainterPath tab;
      tab.moveTo(1.5, 4);
      tab.lineTo(1.5, 2.5);
      tab.lineTo(6, 2.5);
      tab.lineTo(7.5, 4);
      p.setBrush(QColor(214, 160, 48));
      p.drawPath(tab);
      p.drawRoundedRect(QRectF(1.5, 4, 13, 9.5), 1, 1);
      p.setBrush(QColor(240, 196, 82));
      p.drawRoundedRect(QRectF(1.5, 6, 13, 7.5), 1, 1);
      break;
    }
    case Shape::Drive:
      p.setBrush(QColor(170, 176, 186));
      p.drawRoundedRect(QRectF(1.5, 5, 13, 7), 1.5, 1.5);
      p.setBrush(QColor(90, 200, 90));
      p.drawEllipse(QPointF(12, 10), 1, 1);
      p.drawLine(QPointF(3.5, 10), QPointF(8.5, 10));
      break;
    case Shape::Up:
      p.setBrush(QColor(90, 140, 210));
      p.drawPolygon(QPolygonF({QPointF(8, 2), QPointF(14, 8.5), QPointF(10.5, 8.5), QPointF(10.5, 14),
                               QPointF(5.5, 14), QPointF(5.5, 8.5), QPointF(2, 8.5)}));
      break;
    case Shape::Document:
    case Shape::Archive:
    case Shape::Executable:
    case Shape::Image: {
      QPainterPath page;
      page.moveTo(3, 1.5);
      page.lineTo(10, 1.5);
      page.lineTo(13, 4.5);
      page.lineTo(13, 14.5);
      page.lineTo(3, 14.5);
      page.closeSubpath();
      p.setBrush(Qt::white);
      p.drawPath(page);
      p.drawLine(QPointF(10, 1.5), QPointF(10, 4.5));
      p.drawLine(QPointF(10, 4.5), QPointF(13, 4.5));
      if (shape == Shape::Document) {
        p.setPen(QPen(QColor(150, 150, 150), 0.8));
        for (double y = 7; y <= 12.5; y += 2) p.drawLine(QPointF(5, y), QPointF(11, y));
      } else if (shape == Shape::Archive) {
        // A zipper down the middle.
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(120, 90, 40));
        for (double y = 2.5; y < 11; y += 2) p.drawRect(QRectF(7, y, 2, 1));
        p.drawRect(QRectF(6.5, 11, 3, 2.5));
      } else if (shape == Shape::Image) {
        // A landscape: sky, sun and a hill.
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(150, 200, 240));
        p.drawRect(QRectF(4, 6, 8, 7));
        p.setBrush(QColor(250, 200, 60));
        p.drawEllipse(QPointF(6.5, 8), 1.2, 1.2);
        p.setBrush(QColor(90, 170, 90));
        p.drawPolygon(QPolygonF({QPointF(4, 13), QPointF(8, 9), QPointF(12, 13)}));
      } else {
        p.setBrush(QColor(80, 160, 90));
        p.drawPolygon(QPolygonF({QPointF(6, 7), QPointF(11, 10), QPointF(6, 13)}));
      }
      break;
    }
  }
  return pm;
}

// The theme names to try for an icon name: itself, then the generic names a
// desktop theme is sure to have for the same kind of thing.
QStringList ThemeNames(const QString& name) {
  QStringList names{name};
  switch (ShapeOf(name)) {
    case Shape::Folder: names << QStringLiteral("folder"); break;
    case Shape::Drive: names << QStringLiteral("drive-harddisk"); break;
    case Shape::Archive: names << QStringLiteral("package-x-generic"); break;
    case Shape::Executable: names << QStringLiteral("application-x-executable"); break;
    case Shape::Image: names << QStringLiteral("image-x-generic"); break;
    case Shape::Up: break;
    case Shape::Document: names << QStringLiteral("text-x-generic") << QStringLiteral("application-x-generic"); break;
  }
  return names;
}

}  // namespace

IconSource::IconSource(NameOf nameOf) : nameOf_(std::move(nameOf)) {
  if (!nameOf_) nameOf_ = [](int32_t index) { return QString::fromStdString(IconTable::Shared().NameOf(index)); };
}

void IconSource::SetUseTheme(bool use) {
  useTheme_ = use;
  cache_.clear();
}

QIcon IconSource::Drawn(const QString& iconName) {
  QIcon icon;
  const Shape shape = ShapeOf(iconName);
  for (int size : {16, 24, 32, 48}) icon.addPixmap(Draw(shape, size));
  return icon;
}

QIcon IconSource::Icon(int32_t index) {
  if (index <= 0) return {};
  auto found = cache_.constFind(index);
  if (found != cache_.constEnd()) return *found;
  const QString name = nameOf_(index);
  QIcon icon;
  if (useTheme_ && !name.isEmpty())
    for (const QString& candidate : ThemeNames(name)) {
      icon = QIcon::fromTheme(candidate);
      if (!icon.isNull()) break;
    }
  if (icon.isNull()) icon = Drawn(name);
  cache_.insert(index, icon);
  return icon;
}

}  // namespace nxfv::qt

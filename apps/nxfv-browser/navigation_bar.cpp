#include "navigation_bar.h"

#include <QAction>
#include <QDir>
#include <QKeySequence>
#include <QLineEdit>
#include <QStyle>

#include "nxfv/qt/file_viewer_widget.h"

namespace nxfv::browser {

NavigationBar::NavigationBar(qt::FileViewerWidget& viewer, QWidget* parent)
    : QToolBar(tr("Navigation"), parent), viewer_(viewer) {
  setObjectName(QStringLiteral("navigation"));
  setMovable(false);
  back_ = addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("Back"));
  back_->setShortcut(QKeySequence::Back);
  forward_ = addAction(style()->standardIcon(QStyle::SP_ArrowForward), tr("Forward"));
  forward_->setShortcut(QKeySequence::Forward);
  up_ = addAction(style()->standardIcon(QStyle::SP_ArrowUp), tr("Up"));
  up_->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Up));
  for (QAction* a : {back_, forward_, up_}) a->setEnabled(false);

  address_ = new QLineEdit(this);
  address_->setObjectName(QStringLiteral("address"));
  address_->setPlaceholderText(tr("Drives and folders"));
  address_->setClearButtonEnabled(true);
  addWidget(address_);

  connect(back_, &QAction::triggered, this, [this] { viewer_.viewer().HistoryPrevious(); });
  connect(forward_, &QAction::triggered, this, [this] { viewer_.viewer().HistoryNext(); });
  connect(up_, &QAction::triggered, this, [this] { viewer_.viewer().GoUP(); });
  connect(address_, &QLineEdit::returnPressed, this, [this] { navigate(address_->text()); });
  connect(address_, &QLineEdit::textEdited, this, [this] { ShowError(false); });
  connect(&viewer_, &qt::FileViewerWidget::afterNewView, this, &NavigationBar::OnNewView);
}

bool NavigationBar::navigate(const QString& text) {
  QString path = text.trimmed();
  if (path.isEmpty()) return false;
  if (path == u"~" || path.startsWith(u"~/")) path = QDir::homePath() + path.mid(1);
  if (!viewer_.settingsApplied()) viewer_.applySettings();
  const int before = views_;
  viewer_.setCurrentFolder(path);
  // The control raises a new view for every location it shows, the same
  // one included; none means it refused the path (its box said why).
  const bool moved = views_ != before;
  if (!moved) {
    address_->setText(text);
    address_->selectAll();
    ShowError(true);
  }
  return moved;
}

void NavigationBar::OnNewView(const QString& path, bool canGoPrevious, bool canGoNext, bool) {
  ++views_;
  location_ = path;
  back_->setEnabled(canGoPrevious);
  forward_->setEnabled(canGoNext);
  // The drives view (and a host-filled list) has no location to go up from.
  up_->setEnabled(!path.isEmpty());
  ShowError(false);
  address_->setText(path);
}

void NavigationBar::ShowError(bool error) {
  if (address_->property("error").toBool() == error) return;
  address_->setProperty("error", error);
  address_->setStyleSheet(error ? QStringLiteral("QLineEdit { color: #b00020; }") : QString());
}

}  // namespace nxfv::browser

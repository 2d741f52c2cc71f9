// The Linux platform's type names, icons, message box and window services.
#pragma once

#include <functional>
#include <string>

#include "nxfv/platform/services.h"

namespace nxfv {

class IconTable;
class MimeDatabase;

// The classes-root registry as the type-name lookup uses it, answered from
// the shared-mime-info database:
//   "." + extension -> the MIME type (".txt" -> "text/plain")
//   a MIME type     -> its English comment ("plain text document")
// False for anything the database does not know.
class LinuxMimeTypes : public TypeRegistryService {
 public:
  // database: null = the process-wide MimeDatabase::Shared().
  explicit LinuxMimeTypes(MimeDatabase* database = nullptr) : database_(database) {}
  bool ClassesRootDefault(const std::string& key, std::string& value) override;

 private:
  MimeDatabase* database_;
};

// System icon indexes from the process-wide IconTable. The icon name is
// "folder" for a folder; for a file the generic icon of its extension's
// MIME type, "application-x-executable" for an executable without a known
// type, else "application-x-generic". With kShgfiUseFileAttributes only the
// name and the attributes decide; otherwise the path is examined (links
// followed) and a missing path gives 0.
class LinuxIcons : public IconService {
 public:
  explicit LinuxIcons(MimeDatabase* database = nullptr, IconTable* table = nullptr)
      : database_(database), table_(table) {}
  int32_t SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) override;

 private:
  MimeDatabase* database_;
  IconTable* table_;
};

// Hands every box to a host-supplied handler; by default prints
// "PREFIX: [TITLE] TEXT" on standard error ("[TITLE] TEXT" while the prefix
// is empty, as it is until the host names itself) and answers as a box
// without a user would: the button that goes on least (Cancel, No, Abort),
// else OK.
class LinuxMessageBox : public MessageBoxService {
 public:
  using Handler = std::function<int32_t(const std::string& text, int32_t style, const std::string& title)>;
  // Without a handler a box becomes one line on standard error. Identical
  // consecutive boxes (a damaged archive can ask for thousands) print once;
  // the next different box, FlushRepeats() or the end of the object adds
  // one line "(repeated N times)", N being the boxes held back.
  int32_t Show(const std::string& text, int32_t style, const std::string& title) override;
  ~LinuxMessageBox() override;
  void SetHandler(Handler h) { handler_ = std::move(h); }
  // How many boxes identical to the one being shown came right before it
  // (0 for a new one): a handler can offer to ignore the rest.
  uint64_t RepeatCount() const { return repeats_; }
  // Writes the line for the boxes held back, if any (hosts that end with
  // _Exit call it first).
  void FlushRepeats();
  // The host's name at the start of every line, e.g. "nxfv".
  void SetPrefix(std::string prefix) { prefix_ = std::move(prefix); }
  const std::string& Prefix() const { return prefix_; }

  // The one line written for a box: line breaks shown as "\n", CR dropped.
  std::string FormatLine(const std::string& text, const std::string& title) const;
  // The answer of a box nobody can press: Cancel where the style has one,
  // No for Yes/No, Abort for Abort/Retry/Ignore, OK otherwise.
  static int32_t UnattendedAnswer(int32_t style);

 private:
  Handler handler_;
  std::string prefix_;
  std::string lastLine_;
  int32_t lastStyle_ = -1;
  uint64_t repeats_ = 0;
};

class LinuxUi : public UiService {
 public:
  void LockWindowUpdate(bool) override {}
  void SetMousePointer(int32_t pointer) override { pointer_ = pointer; }
  int32_t MousePointer() override { return pointer_; }

 private:
  int32_t pointer_ = 0;
};

}  // namespace nxfv

#pragma once

#include <QDialog>
#include <QRect>

class QCheckBox;
class QLabel;

namespace nbx {
class Settings;

// Where the news text of the update check is kept.
inline constexpr const char* NewsSection = "Window";
inline constexpr const char* NewsKey = "NBX_News";

// NBXDispNews, "Important Information": the maker's news, on top of the
// other windows. Closed with "Discard this message" set, it empties the
// stored news, so that it is not offered again.
class NewsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit NewsDialog(Settings& store, QWidget* parent = nullptr);

  // Takes the text and sizes the window around it, within `area` (the
  // update window's place and size).
  void MsgContent(const QString& text, const QRect& area);

  QCheckBox* discard() const { return ChckMsg_; }

 protected:
  void done(int result) override;

 private:
  Settings& store_;
  QLabel* LblMsg_ = nullptr;
  QCheckBox* ChckMsg_ = nullptr;
};

}  // namespace nbx

#include "ui/widgets/colour_picker.h"

#include <QDialog>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <vector>

namespace nbx {

QColor LabelColour(const QLabel* label) { return label->palette().color(QPalette::Window); }

void SetLabelColour(QLabel* label, const QColor& colour) {
  QPalette palette = label->palette();
  palette.setColor(QPalette::Window, colour);
  label->setPalette(palette);
  label->setAutoFillBackground(true);
}

namespace {

constexpr int Columns = 8;
constexpr int Rows = 6;
constexpr int SwatchSize = 22;

// Forty-eight basic colours, row by row: the reds, yellows, greens, cyans,
// blues and purples in their light to dark shades, then the greys.
constexpr std::array<QRgb, Columns * Rows> Swatches = {
    0xFF8080, 0xFFFF80, 0x80FF80, 0x00FF80, 0x80FFFF, 0x0080FF, 0xFF80C0, 0xFF80FF,
    0xFF0000, 0xFFFF00, 0x80FF00, 0x00FF40, 0x00FFFF, 0x0080C0, 0x8080C0, 0xFF00FF,
    0x804040, 0xFF8040, 0x00FF00, 0x008080, 0x004080, 0x8080FF, 0x800040, 0xFF0080,
    0x800000, 0xFF8000, 0x008000, 0x008040, 0x0000FF, 0x0000A0, 0x800080, 0x8000FF,
    0x400000, 0x804000, 0x004000, 0x004040, 0x000080, 0x000040, 0x400040, 0x400080,
    0x000000, 0x808000, 0x808040, 0x808080, 0x408080, 0xC0C0C0, 0xE0E0E0, 0xFFFFFF,
};

class ColourPicker : public QDialog {
 public:
  ColourPicker(QWidget* over, QLabel* target, bool withText)
      : QDialog(over), target_(target), withText_(withText) {
    setObjectName("NBXColor");
    setWindowTitle(QStringLiteral("Colour"));
    setModal(true);

    frame_ = new QFrame(this);
    frame_->setObjectName("ColorFrame");
    frame_->setFocusPolicy(Qt::StrongFocus);
    frame_->setAccessibleName(QStringLiteral("Colours"));
    frame_->installEventFilter(this);
    auto* grid = new QGridLayout(frame_);
    grid->setSpacing(4);
    for (int index = 0; index < Columns * Rows; ++index) {
      auto* swatch = new QLabel(frame_);
      swatch->setObjectName(QStringLiteral("LblColor(%1)").arg(index));
      swatch->setFixedSize(SwatchSize, SwatchSize);
      swatch->setFrameShape(QFrame::Box);
      SetLabelColour(swatch, QColor(Swatches[static_cast<std::size_t>(index)]));
      swatch->installEventFilter(this);
      grid->addWidget(swatch, index / Columns, index % Columns);
      swatches_.push_back(swatch);
    }
    mark_ = new QFrame(frame_);
    mark_->setObjectName("MarkShape");
    mark_->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark_->hide();

    description_ = new QLineEdit(target->text(), this);
    description_->setObjectName("DescText");
    description_->setMaxLength(11);
    description_->setAccessibleName(QStringLiteral("Description"));
    description_->setVisible(withText);
    description_->installEventFilter(this);

    auto* accept = new QPushButton(QStringLiteral("OK"), this);
    accept->setObjectName("Command1");
    accept->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName("Command2");
    connect(accept, &QPushButton::clicked, this, [this] { Apply(); accept_(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(description_);
    buttons->addStretch();
    buttons->addWidget(accept);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame_);
    layout->addLayout(buttons);

    blink_ = new QTimer(this);
    blink_->setObjectName("Timer1");
    connect(blink_, &QTimer::timeout, this, [this] {
      blinkOn_ = !blinkOn_;
      PaintMark();
    });
    blink_->start(400);

    const QColor present = LabelColour(target);
    for (int index = 0; index < static_cast<int>(swatches_.size()); ++index)
      if (LabelColour(swatches_[static_cast<std::size_t>(index)]).rgb() == present.rgb()) selected_ = index;
    adjustSize();
    if (over) move(over->window()->frameGeometry().center() - rect().center());
    frame_->setFocus();
  }

  int selected() const { return selected_; }

 protected:
  void showEvent(QShowEvent* event) override {
    QDialog::showEvent(event);
    Mark(selected_);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == frame_ && event->type() == QEvent::KeyPress)
      return FrameKey(static_cast<QKeyEvent*>(event)->key());
    if (watched == description_ && event->type() == QEvent::FocusIn)
      QTimer::singleShot(0, description_, &QLineEdit::selectAll);
    const int index = static_cast<int>(std::find(swatches_.begin(), swatches_.end(), watched) -
                                       swatches_.begin());
    if (index < static_cast<int>(swatches_.size())) {
      if (event->type() == QEvent::MouseButtonPress) {
        Mark(index);
        frame_->setFocus();
        return true;
      }
      if (event->type() == QEvent::MouseButtonDblClick) {
        Mark(index);
        Apply();
        accept_();
        return true;
      }
    }
    return QDialog::eventFilter(watched, event);
  }

 private:
  bool FrameKey(int key) {
    if (key == Qt::Key_Escape) {
      reject();
      return true;
    }
    int row = selected_ < 0 ? 0 : selected_ / Columns;
    int column = selected_ < 0 ? 0 : selected_ % Columns;
    if (selected_ >= 0) {
      switch (key) {
        case Qt::Key_Left: column = (column + Columns - 1) % Columns; break;
        case Qt::Key_Right: column = (column + 1) % Columns; break;
        case Qt::Key_Up: row = (row + Rows - 1) % Rows; break;
        case Qt::Key_Down: row = (row + 1) % Rows; break;
        default: return false;
      }
    } else if (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Up &&
               key != Qt::Key_Down) {
      return false;
    }
    Mark(row * Columns + column);
    return true;
  }

  void Mark(int index) {
    selected_ = index;
    if (index < 0) {
      mark_->hide();
      return;
    }
    const QRect around = swatches_[static_cast<std::size_t>(index)]->geometry().adjusted(-3, -3, 3, 3);
    mark_->setGeometry(around);
    PaintMark();
    mark_->show();
    mark_->raise();
  }

  void PaintMark() {
    mark_->setStyleSheet(QStringLiteral("#MarkShape { border: 2px solid %1; }")
                             .arg(blinkOn_ ? QStringLiteral("black") : QStringLiteral("white")));
  }

  void Apply() {
    mark_->hide();
    if (selected_ >= 0) SetLabelColour(target_, LabelColour(swatches_[static_cast<std::size_t>(selected_)]));
    if (withText_) target_->setText(description_->text());
  }

  void accept_() {
    chosen_ = true;
    accept();
  }

  QLabel* target_;
  bool withText_;
  QFrame* frame_ = nullptr;
  QFrame* mark_ = nullptr;
  QLineEdit* description_ = nullptr;
  QTimer* blink_ = nullptr;
  std::vector<QLabel*> swatches_;
  int selected_ = -1;
  bool blinkOn_ = true;
  bool chosen_ = false;
};

}  // namespace

bool PickColour(QWidget* over, QLabel* target, bool withText) {
  if (!target) return false;
  ColourPicker picker(over, target, withText);
  return picker.exec() == QDialog::Accepted;
}

}  // namespace nbx

// The colour picker: swatches set the bars, the bars set the preview and the chosen colour.
#include "ui/col_pik.h"

#include "platform/qt_colour.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

namespace tallyon {
namespace {

constexpr int kSwatch = 18; // swatch side, pixels
constexpr int kMargin = 6;
constexpr int kBarTop = 56;
constexpr int kRowHeight = 28;

void Paint(QWidget* w, QPalette::ColorRole role, Colour colour)
{
    QPalette pal = w->palette();
    pal.setColor(role, ToQColor(colour));
    w->setPalette(pal);
}

} // namespace

const std::array<Colour, 16> ColPik::kStandardColours = {
    RGB(0, 0, 0),     RGB(128, 0, 0),     RGB(0, 128, 0),     RGB(128, 128, 0),  RGB(0, 0, 128), RGB(128, 0, 128),
    RGB(0, 128, 128), RGB(192, 192, 192), RGB(128, 128, 128), RGB(255, 0, 0),    RGB(0, 255, 0), RGB(255, 255, 0),
    RGB(0, 0, 255),   RGB(255, 0, 255),   RGB(0, 255, 255),   RGB(255, 255, 255)};

ColPik::ColPik(QWidget* parent) : QWidget(parent)
{
    setAutoFillBackground(true);
    BuildSwatches();
    BuildBars();
    auto* preview = new QFrame(this);
    preview->setFrameStyle(QFrame::Box | QFrame::Plain);
    preview->setObjectName(QStringLiteral("preview"));
    preview->setAutoFillBackground(true);
    preview->setGeometry(218, kMargin, 76, kBarTop + 3 * kRowHeight - kMargin - 8);
    preview_ = preview;
    setFixedSize(300, 150);
    SetSelectedColour(RGB(0, 0, 0));
}

void ColPik::BuildSwatches()
{
    for (int i = 0; i < 16; ++i) {
        auto* swatch = new QPushButton(this);
        swatch->setObjectName(QStringLiteral("swatch%1").arg(i));
        swatch->setFocusPolicy(Qt::NoFocus);
        const Colour c = kStandardColours[i];
        swatch->setStyleSheet(QStringLiteral("QPushButton { background-color: %1; border: 1px solid #404040; }"
                                             "QPushButton:pressed { border: 2px solid #000000; }")
                                  .arg(ToQColor(c).name()));
        swatch->setToolTip(QStringLiteral("%1, %2, %3").arg(RedOf(c)).arg(GreenOf(c)).arg(BlueOf(c)));
        swatch->setGeometry(kMargin + 18 + (i % 8) * (kSwatch + 6), kMargin + (i / 8) * (kSwatch + 6), kSwatch,
                            kSwatch);
        connect(swatch, &QPushButton::clicked, this, [this, c] { SetSelectedColour(c); });
        swatches_[i] = swatch;
    }
}

void ColPik::BuildBars()
{
    static const char* const kNames[3] = {"R", "G", "B"};
    for (int i = 0; i < 3; ++i) {
        const int top = kBarTop + i * kRowHeight;
        names_[i] = new QLabel(QString::fromLatin1(kNames[i]), this);
        names_[i]->setGeometry(kMargin, top, 16, 20);
        bars_[i] = new QScrollBar(Qt::Horizontal, this);
        bars_[i]->setObjectName(QStringLiteral("bar%1").arg(i));
        bars_[i]->setRange(0, 255);
        bars_[i]->setPageStep(16);
        bars_[i]->setGeometry(kMargin + 18, top + 2, 150, 17);
        values_[i] = new QLabel(QStringLiteral("0"), this);
        values_[i]->setObjectName(QStringLiteral("value%1").arg(i));
        values_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        values_[i]->setGeometry(kMargin + 172, top, 28, 20);
        connect(bars_[i], &QScrollBar::valueChanged, this, &ColPik::BarMoved);
    }
}

Colour ColPik::SelectedColour() const { return RGB(bars_[0]->value(), bars_[1]->value(), bars_[2]->value()); }

void ColPik::SetSelectedColour(Colour colour)
{
    settingBars_ = true;
    bars_[0]->setValue(RedOf(colour));
    bars_[1]->setValue(GreenOf(colour));
    bars_[2]->setValue(BlueOf(colour));
    settingBars_ = false;
    BarMoved();
}

void ColPik::SetColours(Colour back, Colour control)
{
    Paint(this, QPalette::Window, back);
    for (QScrollBar* bar : bars_) {
        Paint(bar, QPalette::Button, control);
        Paint(bar, QPalette::Window, control);
    }
}

void ColPik::BarMoved()
{
    if (settingBars_)
        return;
    for (int i = 0; i < 3; ++i)
        values_[i]->setText(QString::number(bars_[i]->value()));
    const Colour colour = SelectedColour();
    Paint(preview_, QPalette::Window, colour);
    emit ColourChanged(colour);
}

} // namespace tallyon

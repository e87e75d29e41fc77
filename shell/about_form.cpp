// AboutForm, "About Tallyon": the product text, an emblem picture and an OK button.
#include "shell/about_form.h"

#include "platform/canvas.h"
#include "shell/window_paint.h"
#include "ui/fixed_window.h"
#include "ui/front_window.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>

#ifndef TALLYON_RELEASE_MONTH
#define TALLYON_RELEASE_MONTH ""
#endif
#ifndef TALLYON_HOMEPAGE
#define TALLYON_HOMEPAGE ""
#endif

namespace tallyon {

namespace {

constexpr int kFormWidth = 7800; // twips
constexpr int kFormHeight = 3900;
constexpr int kEmblemSide = 1500;

int Px(int twips) { return twips / kTwipsPerPixel; }

} // namespace

QString ContactLine(const QString& homepage)
{
    return homepage.isEmpty() ? QStringLiteral("Contact: see README") : QStringLiteral("Contact: ") + homepage;
}

QString AboutTextFor(const QString& releaseMonth, const QString& homepage)
{
    const QStringList lines = {
        QString(),
        QStringLiteral("Tallyon - ") + releaseMonth,
        QStringLiteral("Draw a path from Start to End using mathematical"),
        QStringLiteral("operations on given numbers"),
        QString(),
        ContactLine(homepage),
        QString(),
        QStringLiteral("This progam is free to use and distribute as supplied"),
        QStringLiteral("for NON COMMERCIAL USE ONLY"),
        QStringLiteral("NO warranties whatsoever"),
    };
    return lines.join(QStringLiteral("\r\n"));
}

QPixmap TallyonEmblem(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const double step = side / 3.0;
    auto centre = [step](int column, int row) { return QPointF(step * (column + 0.5), step * (row + 0.5)); };
    // The lattice lines.
    painter.setPen(QPen(QColor(120, 120, 120), qMax(1.0, side / 60.0)));
    for (int i = 0; i < 3; ++i) {
        painter.drawLine(centre(0, i), centre(2, i));
        painter.drawLine(centre(i, 0), centre(i, 2));
    }
    // A path from the left edge to the right edge.
    painter.setPen(QPen(QColor(0, 128, 0), side / 16.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF path[] = {centre(0, 0), centre(1, 0), centre(1, 1), centre(1, 2), centre(2, 2)};
    painter.drawPolyline(path, 5);
    // The nodes, each with its digit; Start blue, End red.
    static const int digits[3][3] = {{3, 6, 8}, {5, 2, 4}, {7, 1, 9}};
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(qMax(6, int(step * 0.38)));
    font.setBold(true);
    painter.setFont(font);
    const double radius = step * 0.3;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            QColor fill(255, 255, 255);
            if (row == 0 && column == 0)
                fill = QColor(150, 180, 255);
            else if (row == 2 && column == 2)
                fill = QColor(255, 150, 150);
            painter.setPen(QPen(QColor(20, 20, 20), qMax(1.0, side / 50.0)));
            painter.setBrush(fill);
            const QPointF c = centre(column, row);
            painter.drawEllipse(c, radius, radius);
            painter.drawText(QRectF(c.x() - radius, c.y() - radius, 2 * radius, 2 * radius), Qt::AlignCenter,
                             QString::number(digits[row][column]));
        }
    }
    return pixmap;
}

AboutForm::AboutForm(AppState& state, QWidget* parent) : QDialog(parent), state_(state)
{
    setObjectName(QStringLiteral("AboutForm"));
    setWindowTitle(QStringLiteral("About Tallyon"));
    setFixedSize(Px(kFormWidth), Px(kFormHeight));
    GuardFixedWindow(this, Minimize::Refused); // modal: minimized, it could not be found again
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(9);
    setFont(font);

    const int margin = Px(150);
    const int emblem = Px(kEmblemSide);
    Image1 = new QLabel(this);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->setPixmap(TallyonEmblem(emblem));
    Image1->setGeometry(margin, margin, emblem, emblem);

    AboutText = new QPlainTextEdit(this);
    AboutText->setObjectName(QStringLiteral("AboutText"));
    AboutText->setReadOnly(true);
    AboutText->setFrameShape(QFrame::NoFrame);
    AboutText->setLineWrapMode(QPlainTextEdit::NoWrap);
    AboutText->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    AboutText->setPlainText(AboutTextFor(QStringLiteral(TALLYON_RELEASE_MONTH), QStringLiteral(TALLYON_HOMEPAGE)));
    const int textLeft = 2 * margin + emblem;
    AboutText->setGeometry(textLeft, margin, width() - textLeft - margin, height() - 3 * margin - Px(400));
    AboutText->viewport()->installEventFilter(this);
    AboutText->installEventFilter(this);

    AboutOk = new QPushButton(QStringLiteral("OK"), this);
    AboutOk->setObjectName(QStringLiteral("AboutOk"));
    AboutOk->setGeometry(width() - margin - Px(1100), height() - margin - Px(400), Px(1100), Px(400));
    AboutOk->setDefault(true);
    connect(AboutOk, &QPushButton::clicked, this, &QDialog::accept);
}

void AboutForm::ApplyColours()
{
    const Colour background = state_.SchemeColours[kSchemeBackground];
    windowpaint::SetBackground(this, background);
    windowpaint::SetBaseColour(AboutText, background);
    windowpaint::SetBackground(AboutText->viewport(), background);
    windowpaint::SetButtonColour(AboutOk, state_.SchemeColours[kSchemeAbout]);
}

bool AboutForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched == AboutText->viewport()) {
        accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        accept();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void AboutForm::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    ApplyColours();
    BringToFront(this);
}

void AboutForm::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        ApplyColours();
}

} // namespace tallyon

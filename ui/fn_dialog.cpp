// The file-name dialog control: its button, its saved properties and the file dialog it opens.
#include "ui/fn_dialog.h"

#include "platform/canvas.h"
#include "platform/qt_colour.h"

#include "ui/box_control.h"
#include "ui/property_bag.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

namespace tallyon {
namespace {

const QString kDefaultTitle = QStringLiteral("Select File");
const QString kDefaultCaption = QStringLiteral("...");

FNDialog::DialogHook& Hook()
{
    static FNDialog::DialogHook hook;
    return hook;
}

// "Name (pattern)"; patterns separated by ";" are given to the dialog separated by blanks.
QString NameFilter(const QString& name, const QString& types)
{
    QString pattern = types.trimmed();
    pattern.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (pattern.isEmpty())
        pattern = QStringLiteral("*");
    return name + QStringLiteral(" (") + pattern + QLatin1Char(')');
}

// The starting directory without its trailing separator, so "dir" and "dir/" are the same.
QString StartDirectory(const QString& dir)
{
    QString d = dir.trimmed();
    d.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return d.isEmpty() ? QDir::currentPath() : QDir::cleanPath(d);
}

} // namespace

FNDialog::FNDialog(QWidget* parent) : QWidget(parent)
{
    command1 = new QPushButton(kDefaultCaption, this);
    command1->setObjectName(QStringLiteral("command1"));
    command1->installEventFilter(this);
    command1->setMouseTracking(true);
    back_ = FromQColor(command1->palette().color(QPalette::Button));
    connect(command1, &QPushButton::clicked, this, &FNDialog::Click);
    resize(24, 22);
    command1->setGeometry(rect());
    ApplyColours();
}

void FNDialog::SetDialogHook(DialogHook hook) { Hook() = std::move(hook); }

QString FNDialog::ShowDialog(const QString& mode, const QString& initialFile)
{
    const QString remembered = QDir::currentPath();
    QFileDialog dialog(window(), title_, StartDirectory(defaultDir_));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilter(NameFilter(fileTypesName_, fileTypes_));
    if (mode.toUpper() == QStringLiteral("SAVE")) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite); // no option flags are asked for
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!initialFile.trimmed().isEmpty())
        dialog.selectFile(initialFile.trimmed());
    if (Hook())
        Hook()(dialog);

    QString result;
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        result = dialog.selectedFiles().constFirst().trimmed();
    QDir::setCurrent(remembered);
    return result;
}

void FNDialog::SetBackColor(Colour colour)
{
    back_ = colour;
    ApplyColours();
    emit PropertyChanged("BackColor");
}
void FNDialog::SetForeColor(Colour colour)
{
    fore_ = colour;
    ApplyColours();
    emit PropertyChanged("ForeColor");
}
void FNDialog::SetEnabled(bool enabled)
{
    setEnabled(enabled);
    emit PropertyChanged("Enabled");
}
QFont FNDialog::Font() const { return command1->font(); }
void FNDialog::SetFont(const QFont& font)
{
    command1->setFont(font);
    emit PropertyChanged("Font");
}
void FNDialog::SetFileTypes(const QString& types)
{
    fileTypes_ = types;
    emit PropertyChanged("FileTypes");
}
void FNDialog::SetFileTypesName(const QString& name)
{
    fileTypesName_ = name;
    emit PropertyChanged("FileTypesName");
}
void FNDialog::SetTitle(const QString& title)
{
    title_ = title;
    emit PropertyChanged("Title");
}
void FNDialog::SetDefaultDir(const QString& dir)
{
    defaultDir_ = dir;
    emit PropertyChanged("DefaultDir");
}
QString FNDialog::Caption() const { return command1->text(); }
void FNDialog::SetCaption(const QString& caption)
{
    command1->setText(caption);
    emit PropertyChanged("Caption");
}

void FNDialog::SetPicture(const QPixmap& picture)
{
    picture_ = picture;
    command1->setIcon(QIcon(picture));
    command1->setIconSize(picture.deviceIndependentSize().toSize());
    emit PropertyChanged("Picture");
}

void FNDialog::ReadProperties(const PropertyBag& bag)
{
    fore_ = bag.Read("ForeColor", RGB(0, 0, 0)).toUInt();
    setEnabled(bag.Read("Enabled", true).toBool());
    if (bag.Contains("Font"))
        command1->setFont(bag.Read("Font", command1->font()).value<QFont>());
    fileTypes_ = bag.Read("FileTypes", QString()).toString();
    fileTypesName_ = bag.Read("FileTypesName", QString()).toString();
    title_ = bag.Read("Title", kDefaultTitle).toString();
    defaultDir_ = bag.Read("DefaultDir", QString()).toString();
    command1->setText(bag.Read("Caption", kDefaultCaption).toString());
    const QPixmap picture = bag.Read("Picture", QPixmap()).value<QPixmap>();
    picture_ = picture;
    command1->setIcon(QIcon(picture));
    ApplyColours();
}

void FNDialog::WriteProperties(PropertyBag& bag) const
{
    bag.Write("BackColor", back_, QVariant());
    bag.Write("ForeColor", fore_, RGB(0, 0, 0));
    bag.Write("Enabled", isEnabled(), true);
    bag.Write("Font", command1->font(), QVariant());
    bag.Write("FileTypes", fileTypes_, QString());
    bag.Write("FileTypesName", fileTypesName_, QString());
    bag.Write("Title", title_, kDefaultTitle);
    bag.Write("DefaultDir", defaultDir_, QString());
    bag.Write("Caption", command1->text(), kDefaultCaption);
    if (!picture_.isNull())
        bag.Write("Picture", picture_, QVariant());
}

void FNDialog::ApplyColours()
{
    QPalette pal = command1->palette();
    pal.setColor(QPalette::Button, ToQColor(back_));
    pal.setColor(QPalette::ButtonText, ToQColor(fore_));
    command1->setPalette(pal);
}

void FNDialog::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    command1->setGeometry(rect());
}

bool FNDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != command1)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return PassKey(event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        PassMouse(event);
        return false;
    default:
        return false;
    }
}

bool FNDialog::PassKey(QEvent* event)
{
    auto* key = static_cast<QKeyEvent*>(event);
    int code = KeyCode(key->key());
    int shift = ShiftCode(key->modifiers());
    if (event->type() == QEvent::KeyRelease) {
        emit KeyUp(code, shift);
        return false;
    }
    emit KeyDown(code, shift);
    if (key->text().isEmpty())
        return false;
    int ascii = key->text().at(0).unicode();
    emit KeyPress(ascii);
    return ascii == 0; // the holding window cancelled the character
}

void FNDialog::PassMouse(QEvent* event)
{
    auto* mouse = static_cast<QMouseEvent*>(event);
    int shift = ShiftCode(mouse->modifiers());
    float x = static_cast<float>(mouse->position().x() * kTwipsPerPixel);
    float y = static_cast<float>(mouse->position().y() * kTwipsPerPixel);
    if (event->type() == QEvent::MouseMove) {
        int buttons = MouseButtonsCode(mouse->buttons());
        emit MouseMove(buttons, shift, x, y);
        return;
    }
    int button = MouseButtonCode(mouse->button());
    if (event->type() == QEvent::MouseButtonPress)
        emit MouseDown(button, shift, x, y);
    else
        emit MouseUp(button, shift, x, y);
}

} // namespace tallyon

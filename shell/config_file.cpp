// Reading, recovering and writing the configuration file.
#include "shell/config_file.h"

#include "shell/text_file.h"
#include "ui/message_box.h"

#include <QCoreApplication>

#include <limits>

namespace tallyon {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// An optional sign and one or more decimal digits, within the 32-bit signed range.
std::optional<qint32> ParseInteger(const QByteArray& token)
{
    if (token.isEmpty())
        return 0; // an empty field between separators
    qsizetype i = 0;
    const bool negative = token.at(0) == '-';
    if (token.at(0) == '-' || token.at(0) == '+')
        ++i;
    if (i == token.size())
        return std::nullopt;
    qint64 value = 0;
    const qint64 limit =
        negative ? -qint64(std::numeric_limits<qint32>::min()) : qint64(std::numeric_limits<qint32>::max());
    for (; i < token.size(); ++i) {
        const char c = token.at(i);
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
        if (value > limit)
            return std::nullopt;
    }
    return static_cast<qint32>(negative ? -value : value);
}

// Walks the file field by field.
class FieldReader {
public:
    explicit FieldReader(const QByteArray& bytes) : bytes_(bytes) {}

    std::optional<qint32> NextNumber()
    {
        while (!AtEnd() && (IsBlank(Peek()) || IsLineEnd(Peek())))
            ++pos_;
        if (AtEnd())
            return std::nullopt;
        const qsizetype start = pos_;
        while (!AtEnd() && !IsBlank(Peek()) && !IsLineEnd(Peek()) && Peek() != ',')
            ++pos_;
        const auto value = ParseInteger(bytes_.mid(start, pos_ - start));
        SkipSeparator();
        return value;
    }

    std::optional<QString> NextText()
    {
        while (!AtEnd() && IsBlank(Peek()))
            ++pos_;
        if (AtEnd())
            return std::nullopt;
        const qsizetype start = pos_;
        while (!AtEnd() && !IsLineEnd(Peek()) && Peek() != ',')
            ++pos_;
        return QString::fromUtf8(bytes_.mid(start, pos_ - start)).trimmed();
    }

private:
    bool AtEnd() const { return pos_ >= bytes_.size(); }
    char Peek() const { return bytes_.at(pos_); }

    // Trailing blanks, then one comma or one line end (CR LF counts as one).
    void SkipSeparator()
    {
        while (!AtEnd() && IsBlank(Peek()))
            ++pos_;
        if (AtEnd())
            return;
        if (Peek() == ',' || Peek() == '\n') {
            ++pos_;
        } else if (Peek() == '\r') {
            ++pos_;
            if (!AtEnd() && Peek() == '\n')
                ++pos_;
        }
    }

    const QByteArray& bytes_;
    qsizetype pos_ = 0;
};

QString NumberText(qint32 value)
{
    return value < 0 ? QString::number(value) : QLatin1Char(' ') + QString::number(value);
}

void LetEventsRun()
{
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::processEvents();
}

QString FailureText(const QString& path, const char* outcome)
{
    return QStringLiteral("Configuration file:\r\n") + path + QStringLiteral("\r\n") + QLatin1String(outcome);
}

} // namespace

QString ConfigFilePath(const AppState& state)
{
    return (state.SettingsDir.isEmpty() ? state.AppDir : state.SettingsDir) + QStringLiteral("tallyon.cfg");
}

std::optional<Settings> ParseConfig(const QByteArray& bytes)
{
    FieldReader reader(bytes);
    qint32 n[9];
    for (qint32& value : n) {
        const auto read = reader.NextNumber();
        if (!read)
            return std::nullopt;
        value = *read;
    }
    const auto scheme = reader.NextText();
    if (!scheme)
        return std::nullopt;
    Settings s;
    s.GridSize = n[0];
    s.NodeShape = n[1];
    s.GridLineWidth = n[2] < 1 ? 1 : n[2];
    s.ShapeColour = static_cast<Colour>(n[3]);
    s.GridColour = static_cast<Colour>(n[4]);
    s.FontColour = static_cast<Colour>(n[5]);
    s.PathDirection = n[6];
    s.UserLineColour = static_cast<Colour>(n[7]);
    s.PrintLineWidth = n[8];
    s.SchemeFile = *scheme;
    return s;
}

QStringList FormatConfig(const Settings& s)
{
    // Colours go out as signed 32-bit values so that every value written reads back.
    const qint32 n[9] = {s.GridSize,
                         s.NodeShape,
                         s.GridLineWidth,
                         static_cast<qint32>(s.ShapeColour),
                         static_cast<qint32>(s.GridColour),
                         static_cast<qint32>(s.FontColour),
                         s.PathDirection,
                         static_cast<qint32>(s.UserLineColour),
                         s.PrintLineWidth};
    QStringList numbers;
    for (qint32 value : n)
        numbers.append(NumberText(value));
    // The reader accepts any run of blanks or a comma between the numbers.
    return {numbers.join(QLatin1Char(' ')), s.SchemeFile};
}

bool ReadConfig(AppState& state)
{
    const QString path = ConfigFilePath(state);
    if (const auto bytes = ReadFileBytes(path, kMaxSettingsFileBytes)) {
        if (const auto settings = ParseConfig(*bytes)) {
            state.settings = *settings;
            return true;
        }
    }
    ShowMessage(FailureText(path, "could not be accessed, new file will be created"),
                QStringLiteral("vbok+vbinformation"));
    LetEventsRun();
    state.settings = FreshInstallSettings();
    WriteTextLines(path, FormatConfig(state.settings)); // a failure here stays silent
    return false;
}

bool WriteConfig(AppState& state)
{
    const QString path = ConfigFilePath(state);
    if (WriteTextLines(path, FormatConfig(state.settings)))
        return true;
    ShowMessage(FailureText(path, "could not be accessed, options not saved"), QStringLiteral("vbok+vbcritical"));
    return false;
}

} // namespace tallyon

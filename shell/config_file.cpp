// Reading, recovering and writing the configuration file.
#include "shell/config_file.h"

#include "shell/text_file.h"
#include "ui/message_box.h"

#include <QCoreApplication>
#include <QStringDecoder>

#include <cmath>
#include <limits>

namespace tallyon {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

// True for an optional sign, digits with at most one decimal point (at least one digit), and
// an optional exponent: the forms a number takes in a file written by hand or by another
// program. Anything else (text, "inf", hexadecimal) is no number.
bool IsNumberText(const QByteArray& token)
{
    qsizetype i = 0;
    const qsizetype n = token.size();
    auto digits = [&] {
        const qsizetype from = i;
        while (i < n && token.at(i) >= '0' && token.at(i) <= '9')
            ++i;
        return i - from;
    };
    if (i < n && (token.at(i) == '-' || token.at(i) == '+'))
        ++i;
    qsizetype mantissa = digits();
    if (i < n && token.at(i) == '.') {
        ++i;
        mantissa += digits();
    }
    if (mantissa == 0)
        return false;
    if (i < n && (token.at(i) == 'e' || token.at(i) == 'E')) {
        ++i;
        if (i < n && (token.at(i) == '-' || token.at(i) == '+'))
            ++i;
        if (digits() == 0)
            return false;
    }
    return i == n;
}

// A number rounded half to even (1.5 reads 2, 2.5 reads 2), within the 32-bit signed range.
std::optional<qint32> ParseInteger(const QByteArray& token)
{
    if (token.isEmpty())
        return 0; // an empty field between separators
    if (!IsNumberText(token))
        return std::nullopt;
    bool ok = false;
    const double value = token.toDouble(&ok);     // the C locale's decimal point, whatever the user's
    const double rounded = std::nearbyint(value); // the default rounding mode: half to even
    if (!ok || !(rounded >= std::numeric_limits<qint32>::min() && rounded <= std::numeric_limits<qint32>::max()))
        return std::nullopt;
    return static_cast<qint32>(rounded);
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
        // A byte-order mark here is text of the field, not the start of a file: kept, so that
        // the name reads back as it was written.
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        return QString(utf8(bytes_.mid(start, pos_ - start))).trimmed();
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

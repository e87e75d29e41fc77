// Listing and loading the colour schemes of "all.col".
#include "shell/schemes.h"

#include "core/board/board.h"
#include "platform/qt_colour.h"
#include "shell/text_file.h"
#include "ui/message_box.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tallyon {

namespace {

constexpr int kSchemeEntries = 13;

enum class SchemeSearch { OpenFailed, NotFound, Found };

struct SchemeLoad {
    SchemeSearch search = SchemeSearch::OpenFailed;
    Colour result = 0;
};

// Fills the table from the block after the header line; stops at a short line or the end.
Colour FillFromBlock(const QStringList& lines, qsizetype first, SchemeTable& table)
{
    Colour result = 0;
    for (int index = 0; index < kSchemeEntries; ++index) {
        const qsizetype at = first + index;
        if (at >= lines.size())
            break;
        const QStringList fields = lines.at(at).split(QLatin1Char(';'));
        if (fields.size() < 3)
            break;
        table[index] =
            RGB(SchemeChannelValue(fields.at(0)), SchemeChannelValue(fields.at(1)), SchemeChannelValue(fields.at(2)));
        if (index == kSchemeBackground)
            result = table[index];
    }
    return result;
}

SchemeLoad LoadFromFile(const QString& path, const QString& name, SchemeTable& table)
{
    const auto lines = ReadTextLines(path, kMaxSchemesFileBytes);
    if (!lines)
        return {};
    const qsizetype header = lines->indexOf(name);
    if (header < 0)
        return {SchemeSearch::NotFound, 0};
    return {SchemeSearch::Found, FillFromBlock(*lines, header + 1, table)};
}

void LetEventsRun()
{
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::processEvents();
}

Colour PlatformListBackground() { return FromQColor(QApplication::palette().color(QPalette::Base)); }

} // namespace

QString SchemesFilePath(const AppState& state) { return state.AppDir + QStringLiteral("all.col"); }

QStringList SchemeNamesIn(const QStringList& lines)
{
    QStringList names;
    for (const QString& line : lines) {
        const qsizetype at = line.indexOf(QLatin1String(".col"), 0, Qt::CaseSensitive);
        if (at >= 0)
            names.append(line.left(at));
    }
    return names;
}

std::optional<QStringList> ListSchemes(const AppState& state, FileProblem* problem)
{
    const auto lines = ReadTextLines(SchemesFilePath(state), kMaxSchemesFileBytes, problem);
    if (!lines)
        return std::nullopt;
    return SchemeNamesIn(*lines);
}

namespace {

QString ProblemText(FileProblem problem)
{
    switch (problem) {
    case FileProblem::NotAFile:
        return QStringLiteral("is not a regular file");
    case FileProblem::TooBig:
        return QStringLiteral("is too large (over %1 MB)").arg(kMaxSchemesFileBytes >> 20);
    case FileProblem::Unreadable:
        return QStringLiteral("could not be read");
    default:
        return QStringLiteral("not found");
    }
}

} // namespace

void FailMissingSchemes(const QString& path, FileProblem problem)
{
    const QString why = ProblemText(problem);
    std::fprintf(stderr, "Tallyon: colour schemes file %s: %s\n", why.toLocal8Bit().constData(),
                 path.toLocal8Bit().constData());
    std::fflush(stderr);
    ShowMessage(QStringLiteral("Colour schemes file:\r\n") + path + QStringLiteral("\r\n") + why +
                    QStringLiteral(", the program cannot start"),
                QStringLiteral("vbok+vbcritical"));
    std::exit(1);
}

int SchemeChannelValue(const QString& field)
{
    const QString text = field.trimmed();
    qsizetype i = 0;
    const bool negative = i < text.size() && text.at(i) == QLatin1Char('-');
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        ++i;
    double value = 0.0;
    for (; i < text.size() && text.at(i).isDigit() && text.at(i).unicode() < 128; ++i)
        value = std::min(value * 10.0 + (text.at(i).unicode() - '0'), 1.0e6);
    if (i < text.size() && text.at(i) == QLatin1Char('.')) {
        double scale = 0.1;
        for (++i; i < text.size() && text.at(i).isDigit() && text.at(i).unicode() < 128; ++i) {
            value += scale * (text.at(i).unicode() - '0');
            scale /= 10.0;
        }
    }
    if (negative)
        return 0; // a negative value counts as 0, as a value above 255 counts as 255
    return value > 255.0 ? 255 : RoundHalfEven(value);
}

Colour LoadSchemeAtStartup(AppState& state, const QString& name)
{
    const SchemeLoad load = LoadFromFile(SchemesFilePath(state), name, state.SchemeColours);
    if (load.search != SchemeSearch::NotFound)
        return load.result;
    ShowMessage(QStringLiteral("Colour Scheme: ") + name + QStringLiteral(" not found"),
                QStringLiteral("vbok+vbcritical"));
    LetEventsRun();
    state.settings.SchemeFile = QStringLiteral("xp.col");
    return 0;
}

Colour LoadSchemePreview(AppState& state, const QString& name)
{
    SchemeTable& table = state.SchemeColours;
    if (name.toLower() == QStringLiteral("default.col")) {
        table[kSchemeBackground] = PlatformListBackground();
        table[kSchemeControl] = table[kSchemeBackground];
        table[kSchemeMenuBar] = fixed::Blue;
        return table[kSchemeBackground];
    }
    const QString file = state.PreviewSchemesFile.isEmpty() ? QStringLiteral("all.col") : state.PreviewSchemesFile;
    const SchemeLoad load = LoadFromFile(file, name, table);
    if (load.search != SchemeSearch::NotFound)
        return load.result;
    ShowMessage(QStringLiteral("Color Scheme: ") + name + QStringLiteral(" not found"), QStringLiteral("vbok"));
    state.settings.SchemeFile = QStringLiteral("default.col");
    return 0;
}

bool SchemeColoursMenu(const QString& schemeFile) { return !schemeFile.toUpper().contains(QStringLiteral("DEFAULT")); }

} // namespace tallyon

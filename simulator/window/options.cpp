#include "options.h"

#include "profiles.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace tessaly::simulator {

namespace {

constexpr auto helpText = R"(usage: tessaly-simulator --root DIR [OPTION...]

Shows a simulated device in a window, with the switches of what surrounds it.

  --root DIR         folder of the device; laid out fresh from the factory if it is empty
  --profile NAME     kind of device: %1
  --language CODE    language of the interface: %2
  --screenshot FILE  save a picture of the screen as PNG, and end
  --convert-ahead    have the server convert all dictionaries from its start on
  --quit-after MS    end after this many milliseconds
  --help             show this

Without --profile and --language the device stays what it was at the last run.
SIGUSR1 cuts the device's power: everything on it ends at once, and it starts again.
)";

QString list(const QStringList& values) {
    return values.join(QStringLiteral(", "));
}

/// What is wrong with the values, each by itself.
QString faultOf(const Options& options, const QString& quitAfter) {
    if (options.root.isEmpty())
        return QStringLiteral("--root DIR is required");
    if (QFileInfo(options.root).exists() && !QFileInfo(options.root).isDir())
        return QStringLiteral("--root: \"%1\" is not a folder").arg(options.root);
    if (!options.profile.isEmpty() && !findProfile(options.profile))
        return QStringLiteral("--profile: \"%1\" is none of %2").arg(options.profile, list(profileNames()));
    if (!options.language.isEmpty() && !interfaceLanguages().contains(options.language))
        return QStringLiteral("--language: \"%1\" is none of %2")
            .arg(options.language, list(interfaceLanguages()));
    if (!options.screenshot.isEmpty() && !QFileInfo(QFileInfo(options.screenshot).path()).isDir())
        return QStringLiteral("--screenshot: there is no folder for \"%1\"").arg(options.screenshot);
    if (!quitAfter.isEmpty() && options.quitAfterMs < 0)
        return QStringLiteral("--quit-after: \"%1\" is not a number of milliseconds").arg(quitAfter);
    return {};
}

} // namespace

QStringList interfaceLanguages() {
    return {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("ru")};
}

Options parseOptions(const QStringList& arguments) {
    const auto option = [](const char* name) {
        return QCommandLineOption(QLatin1String(name), {}, QStringLiteral("VALUE"));
    };
    const QCommandLineOption root = option("root");
    const QCommandLineOption profile = option("profile");
    const QCommandLineOption language = option("language");
    const QCommandLineOption screenshot = option("screenshot");
    const QCommandLineOption quitAfter = option("quit-after");
    const QCommandLineOption convertAhead(QStringLiteral("convert-ahead"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});

    QCommandLineParser parser;
    parser.addOptions({root, profile, language, screenshot, quitAfter, convertAhead, help});
    Options options;
    const bool isUnderstood = parser.parse(arguments);
    if (parser.isSet(help)) {
        options.help = QString::fromLatin1(helpText).arg(list(profileNames()), list(interfaceLanguages()));
        return options;
    }
    options.root = parser.value(root);
    options.profile = parser.value(profile);
    options.language = parser.value(language);
    options.screenshot = parser.value(screenshot);
    options.convertAhead = parser.isSet(convertAhead);
    bool isNumber = false;
    const int quitAfterMs = parser.value(quitAfter).toInt(&isNumber);
    options.quitAfterMs = isNumber ? quitAfterMs : -1;

    const QStringList given = parser.optionNames();
    if (!isUnderstood) {
        options.error = parser.errorText();
    } else if (!parser.positionalArguments().isEmpty()) {
        options.error =
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst());
    } else {
        for (const QString& name : given) {
            if (!convertAhead.names().contains(name) && parser.value(name).isEmpty())
                options.error = QStringLiteral("--%1 needs a value").arg(name);
        }
        if (options.error.isEmpty())
            options.error = faultOf(options, parser.value(quitAfter));
    }
    return options;
}

} // namespace tessaly::simulator

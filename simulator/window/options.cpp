#include "options.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <vellum/device_state.h>

namespace tessaly::simulator {

namespace {

namespace state = vellum::state;

constexpr auto helpText = R"(usage: tessaly-simulator --root DIR [OPTION...]

Shows a simulated device in a window, with the switches of what surrounds it.

  --root DIR         folder of the device; laid out fresh from the factory if it is empty
  --profile NAME     kind of device: %1
  --language CODE    language of the interface: %2
  --convert-ahead    have the server convert all dictionaries from its start on
  --help             show this

Without --profile and --language the device stays what it was at the last run.
SIGUSR1 cuts the device's power: everything on it ends at once, and it starts again.
)";

QString list(const QStringList& values) {
    return values.join(QStringLiteral(", "));
}

QStringList profileNames() {
    QStringList names;
    for (const Profile& profile : profiles())
        names << profile.name;
    return names;
}

/// What is wrong with the values, each by itself.
QString faultOf(const Options& options) {
    const QFileInfo root(options.root);
    if (root.exists() && !root.isDir())
        return QStringLiteral("--root: \"%1\" is not a folder").arg(options.root);
    if (!options.profile.isEmpty() && !profileNames().contains(options.profile))
        return QStringLiteral("--profile: \"%1\" is none of %2").arg(options.profile, list(profileNames()));
    if (!options.language.isEmpty() && !interfaceLanguages().contains(options.language))
        return QStringLiteral("--language: \"%1\" is none of %2")
            .arg(options.language, list(interfaceLanguages()));
    return {};
}

state::Input inputOf(const Profile& profile) {
    return profile.touch ? state::Input::Touch : state::Input::Keys;
}

} // namespace

const std::vector<Profile>& profiles() {
    static const std::vector<Profile> all = {
        {QStringLiteral("6-touch"), QStringLiteral("6 inch, touch"), "758x1024", true},
        {QStringLiteral("6-touch-hd"), QStringLiteral("6 inch, touch, fine screen"), "1072x1448", true},
        {QStringLiteral("6-keys"), QStringLiteral("6 inch, keys only"), "758x1024", false},
    };
    return all;
}

void applyProfile(const QString& name) {
    for (const Profile& profile : profiles()) {
        if (profile.name != name)
            continue;
        state::setScreen(profile.screen);
        state::setInput(inputOf(profile));
    }
}

QString currentProfile() {
    for (const Profile& profile : profiles()) {
        if (profile.screen == state::screen() && inputOf(profile) == state::input())
            return profile.name;
    }
    return {};
}

QStringList interfaceLanguages() {
    return {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("ru")};
}

Options parseOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption convertAhead(QStringLiteral("convert-ahead"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    parser.addOptions({convertAhead, help});
    for (const char* const name : {"root", "profile", "language"})
        parser.addOption({QLatin1String(name), {}, QStringLiteral("VALUE")});
    Options options;
    const bool isUnderstood = parser.parse(arguments);
    if (parser.isSet(help)) {
        options.help = QString::fromLatin1(helpText).arg(list(profileNames()), list(interfaceLanguages()));
        return options;
    }
    if (!isUnderstood) {
        options.error = parser.errorText();
        return options;
    }
    for (const QString& name : parser.optionNames()) {
        if (!convertAhead.names().contains(name) && parser.value(name).isEmpty())
            options.error = QStringLiteral("--%1 needs a value").arg(name);
    }
    options.root = parser.value(QStringLiteral("root"));
    options.profile = parser.value(QStringLiteral("profile"));
    options.language = parser.value(QStringLiteral("language"));
    options.convertAhead = parser.isSet(convertAhead);
    if (!parser.positionalArguments().isEmpty())
        options.error =
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst());
    else if (options.root.isEmpty() && options.error.isEmpty())
        options.error = QStringLiteral("--root DIR is required");
    if (options.error.isEmpty())
        options.error = faultOf(options);
    return options;
}

} // namespace tessaly::simulator

#include <tests/support/files.h>

#include <QRegularExpression>
#include <QTest>

namespace {

using namespace Qt::StringLiterals;

QString source(const QString& path) {
    return QStringLiteral(TESSALY_SOURCE_DIR "/") + path;
}

/// All that matches, in the order of its names: another language may say it in another order.
QStringList sorted(QRegularExpressionMatchIterator matches) {
    QStringList found;
    while (matches.hasNext())
        found += matches.next().captured();
    found.sort();
    return found;
}

/// Texts by key, of which there are several where there are plural forms; none for an unfinished one.
QMap<QString, QStringList> readTranslation(const QString& code) {
    static const QRegularExpression message(
        u"<message( numerus=\"yes\")?>.*?<source>(.*?)</source>.*?<translation>(.*?)</translation>"_s,
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression form(u"(?<=<numerusform>)[^<]*"_s);
    QMap<QString, QStringList> texts;
    const QString file =
        QString::fromUtf8(readFile(source(u"platform/data/translations/tessaly_%1.ts"_s.arg(code))));
    for (const QRegularExpressionMatch& found : message.globalMatch(file)) {
        const QString text = found.captured(3);
        texts[found.captured(2)] += found.hasCaptured(1) ? sorted(form.globalMatch(text)) : QStringList(text);
    }
    return texts;
}

} // namespace

/// Each text that the interface shows, in all languages.
class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachLanguageHasEveryTextAndNoOther() {
        static const QRegularExpression literal(
            u"[\"'](@[A-Za-z]\\w*[?]?)[\"'](\\s*,\\s*[\"'][^\"']*[\"']\\s*,)?"_s);
        QMap<QString, bool> used; // and whether a plural form is asked for
        for (const QString& folder : {u"dictpmplugin/qml"_s, u"platform/controls"_s, u"simulator/window"_s}) {
            const auto files = folderContent(source(folder));
            for (auto file = files.begin(); file != files.end(); ++file) {
                const QString text = file.key().endsWith(".qml"_L1) ? QString::fromUtf8(*file) : QString();
                for (const QRegularExpressionMatch& found : literal.globalMatch(text))
                    used[found.captured(1)] |= found.hasCaptured(2);
            }
        }
        const auto english = readTranslation(u"en"_s);
        QCOMPARE(english.keys(), used.keys());
        static const QRegularExpression placeholder(u"%[0-9a-zA-Z]+"_s);
        for (const auto& [code, forms] : {std::pair(u"en"_s, 2), {u"de"_s, 2}, {u"fr"_s, 2}, {u"ru"_s, 3}}) {
            const auto texts = readTranslation(code);
            QCOMPARE(texts.keys(), used.keys());
            for (auto entry = texts.begin(); entry != texts.end(); ++entry) {
                const QByteArray where = code.toUtf8() + ": " + entry.key().toUtf8();
                QVERIFY2(entry->size() == (used[entry.key()] ? forms : 1), where);
                for (const QString& text : *entry)
                    QVERIFY2(!text.trimmed().isEmpty() &&
                                 sorted(placeholder.globalMatch(text)) ==
                                     sorted(placeholder.globalMatch(english[entry.key()].constFirst())),
                             where);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "translations_test.moc"

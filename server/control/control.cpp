#include "control/control.h"

#include <QJsonArray>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace tessaly::server {

namespace {

constexpr QLatin1String anyNumber("a number from 0 on");
constexpr QLatin1String ids("an array of numbers");
constexpr QLatin1String anyStatus("status:N");

/// A switch and what it may be: one of the above or one of these words, of which the first is the default.
struct Rule {
    QLatin1String name;
    QLatin1String values;
};
constexpr Rule rules[] = {
    {QLatin1String("delay_ms"), anyNumber},
    {QLatin1String("catalogue"), QLatin1String("normal malformed bad_record status:N")},
    {QLatin1String("unlisted"), ids},
    {QLatin1String("package_request"), QLatin1String("normal wait malformed status:N")},
    {QLatin1String("package_state"), QLatin1String("normal wait malformed status:N")},
    {QLatin1String("package_fault"), QLatin1String("normal damaged truncated wrong_size hostile")},
    {QLatin1String("package_build_ms"), anyNumber},
    {QLatin1String("bytes_per_second"), anyNumber},
};

bool isNumber(const QJsonValue& value) {
    const qint64 number = value.toInteger(-1);
    return number >= 0 && number <= std::numeric_limits<int>::max();
}

int statusOf(const QString& mode) {
    constexpr QLatin1String prefix("status:");
    const int status = mode.startsWith(prefix) ? mode.sliced(prefix.size()).toInt() : 0;
    return status >= 200 && status <= 599 ? status : 0;
}

bool allows(const Rule& rule, const QJsonValue& value) {
    if (rule.values == anyNumber)
        return isNumber(value);
    if (rule.values == ids) {
        const QJsonArray array = value.toArray();
        return value.isArray() && std::all_of(array.begin(), array.end(), isNumber);
    }
    const QStringList words = QString(rule.values).split(u' ');
    const QString mode = value.toString();
    return (words.contains(mode) && mode != anyStatus) || (words.contains(anyStatus) && statusOf(mode) != 0);
}

QJsonValue defaultOf(const Rule& rule) {
    if (rule.values == anyNumber)
        return 0;
    return rule.values == ids ? QJsonValue(QJsonArray()) : QString(rule.values).section(u' ', 0, 0);
}

} // namespace

Control::Control() {
    for (const Rule& rule : rules)
        m_switches.insert(rule.name, defaultOf(rule));
}

int Control::status(QLatin1String name) const {
    return statusOf(mode(name));
}

bool Control::isUnlisted(int id) const {
    return m_switches.value(QLatin1String("unlisted")).toArray().contains(id);
}

QString Control::apply(QJsonObject object) {
    Control changed = object.take(QLatin1String("reset")).toBool() ? Control() : *this;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const auto rule = std::find_if(std::begin(rules), std::end(rules),
                                       [&entry](const Rule& one) { return one.name == entry.key(); });
        if (rule == std::end(rules))
            return QStringLiteral("there is no switch \"%1\"").arg(entry.key());
        if (!allows(*rule, entry.value()))
            return QStringLiteral("\"%1\" may be: %2").arg(rule->name, rule->values);
        changed.m_switches.insert(entry.key(), entry.value());
    }
    *this = changed;
    return {};
}

QJsonObject Control::toJson() const {
    QJsonObject requests;
    for (auto entry = m_requests.begin(); entry != m_requests.end(); ++entry)
        requests.insert(entry.key(), entry.value());
    QJsonArray reported;
    for (const int package : m_reported)
        reported << package;
    return {{QStringLiteral("switches"), m_switches},
            {QStringLiteral("requests"), requests},
            {QStringLiteral("reported"), reported}};
}

} // namespace tessaly::server

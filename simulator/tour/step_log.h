#pragma once

#include <QJsonArray>
#include <QString>
#include <functional>
#include <stdexcept>

namespace tessaly::tour {

/// What a step throws when the product didn't do what it should.
class StepFailed : public std::runtime_error {
public:
    explicit StepFailed(const QString& why)
        : std::runtime_error(why.toStdString()) {}
};

/// Throws StepFailed with `why` unless `holds`.
void require(bool holds, const QString& why);
/// Runs the event loop until `holds`; StepFailed with `what` after `timeoutMs`.
void waitUntil(const std::function<bool()>& holds, const QString& what, int timeoutMs = 30000);

/// Runs the steps one after the other and prints "ok N what" or "not ok N what" for each.
class StepLog {
public:
    /// What `step` returns, if anything, is added to the line as a remark. True if it was ok.
    bool run(const QString& what, const std::function<QString()>& step);

    [[nodiscard]] bool allOk() const { return m_failed == 0; }
    /// Writes tour.json into a host folder, which is made if need be. False if that fails.
    [[nodiscard]] bool save(const QString& folder) const;

private:
    QJsonArray m_steps;
    int m_failed = 0;
};

} // namespace tessaly::tour

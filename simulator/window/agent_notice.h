#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly::simulator {

/// What the device's network agent has to say, for the screen to show. Back and Enter take it back, and do
/// nothing else then: the focus stays where it is. GUI thread.
class AgentNotice : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Kind kind READ kind NOTIFY kindChanged)

public:
    /// As the device's state has them.
    enum Kind { None, Connecting, NoNetwork };
    Q_ENUM(Kind)

    AgentNotice();

    [[nodiscard]] Kind kind() const { return m_kind; }
    Q_INVOKABLE void takeBack();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void kindChanged();

private:
    void follow();

    QFileSystemWatcher m_watcher;
    Kind m_kind = None;
    int m_key = 0; ///< that is held since the notice was there
};

} // namespace tessaly::simulator

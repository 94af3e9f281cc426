#include "../support/bare_device.h"
#include "../support/quick_device.h"

#include <QtQuickTest/quicktest.h>

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) { m_device.setUp(engine); }

private:
    const tessaly::tests::BareDevice m_root;
    tessaly::tests::QuickDevice m_device;
};

QUICK_TEST_MAIN_WITH_SETUP(controls, Setup)
#include "controls_test.moc"

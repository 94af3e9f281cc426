#include "../support/quick_device.h"

#include <QtQuickTest/quicktest.h>
#include <simulator/fixture/test_device.h>

class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine* engine) { m_device.setUp(engine); }

private:
    const tessaly::fixture::TestDevice m_root;
    tessaly::tests::QuickDevice m_device;
};

QUICK_TEST_MAIN_WITH_SETUP(controls, Setup)
#include "controls_test.moc"

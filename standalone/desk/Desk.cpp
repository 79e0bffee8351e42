#include "standalone/desk/Desk.h"

#include "standalone/StandaloneModel.h"

#include <QtGlobal>

// Generated functions of a static library, which the linker would leave out.
void qml_register_types_zvt_controller_desk();

static void initResources() { Q_INIT_RESOURCE(qmlcache_zvtdesk); }

Desk::Desk(StandaloneModel &standalone, QSettings &settings)
    : m_settings(settings), m_picture(standalone), m_line(standalone, m_faults), m_world(standalone, m_faults),
      m_otherClient(standalone), m_calls(standalone)
{
    connect(&m_otherClient, &SettingListModel::settingChanged, &m_world, &WorldModel::readFaults);
}

void Desk::registerTypes()
{
    static const bool registered = [] {
        initResources();
        qml_register_types_zvt_controller_desk();
        return true;
    }();
    Q_UNUSED(registered)
}

#pragma once

#include "standalone/desk/CallListModel.h"
#include "standalone/desk/DeskSettings.h"
#include "standalone/desk/Faults.h"
#include "standalone/desk/LineModel.h"
#include "standalone/desk/PictureModel.h"
#include "standalone/desk/SettingListModel.h"
#include "standalone/desk/WorldModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QSettings;
class StandaloneModel;

/// The models of the desk, one for each card. GUI thread only.
///
/// They use the emulated camera directly, not the plug-in or the page. The models exist as long as the window, so that
/// faults last while the desk is hidden. A model works only while its card shows it.
class Desk : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the window")
    Q_PROPERTY(PictureModel *picture READ picture CONSTANT FINAL)
    Q_PROPERTY(LineModel *line READ line CONSTANT FINAL)
    Q_PROPERTY(WorldModel *world READ world CONSTANT FINAL)
    Q_PROPERTY(SettingListModel *otherClient READ otherClient CONSTANT FINAL)
    Q_PROPERTY(CallListModel *calls READ calls CONSTANT FINAL)
    Q_PROPERTY(Faults *faults READ faults CONSTANT FINAL)
    Q_PROPERTY(DeskSettings *settings READ settings CONSTANT FINAL)

public:
    /// Both must outlive the desk.
    Desk(StandaloneModel &standalone, QSettings &settings);

    /// Makes the QML files of the desk available. To be called before they are loaded.
    static void registerTypes();

    PictureModel *picture() { return &m_picture; }
    LineModel *line() { return &m_line; }
    WorldModel *world() { return &m_world; }
    SettingListModel *otherClient() { return &m_otherClient; }
    CallListModel *calls() { return &m_calls; }
    Faults *faults() { return &m_faults; }
    DeskSettings *settings() { return &m_settings; }

private:
    // The order matters: the cards' models report their faults until they are destroyed.
    DeskSettings m_settings;
    Faults m_faults;
    PictureModel m_picture;
    LineModel m_line;
    WorldModel m_world;
    SettingListModel m_otherClient;
    CallListModel m_calls;
};

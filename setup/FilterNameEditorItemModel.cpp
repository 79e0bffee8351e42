#include "setup/FilterNameEditorItemModel.h"

#include "common/setters.h"

#include <utility>

FilterNameEditorItemModel::FilterNameEditorItemModel(int filterID, QString defaultName, QString name, QObject *parent)
    : QObject(parent), m_filterID(filterID), m_defaultName(std::move(defaultName)), m_name(std::move(name))
{
}

void FilterNameEditorItemModel::setName(const QString &name)
{
    if (!storeOnly(this, name, m_name, &Self::nameChanged))
        return;
    announce(this, true, m_hasBeenModified, &Self::hasBeenModifiedChanged);
    emit isDefaultChanged();
}

void FilterNameEditorItemModel::useDefault() { setName(m_defaultName); }

#include "recording/SsdMovieFileInfoModel.h"

#include "common/conversions.h"
#include "common/reading.h"
#include "common/setters.h"

SsdMovieFileInfoModel::SsdMovieFileInfoModel(int index, const zvtSSsdMovieInfo &info, QObject *parent)
    : QObject(parent), m_index(index), m_info(info)
{
}

QString SsdMovieFileInfoModel::name() const { return fromBoundedUtf8(m_info.name, sizeof m_info.name); }

QString SsdMovieFileInfoModel::startTimeString() const { return stringifyIrigTime(m_info.startTime); }

QString SsdMovieFileInfoModel::endTimeString() const { return stringifyIrigTime(m_info.endTime); }

void SsdMovieFileInfoModel::setSelected(bool selected)
{
    storeOnly(this, selected, m_selected, &SsdMovieFileInfoModel::selectedChanged);
}

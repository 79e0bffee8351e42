#include "common/ZvtModelTable.h"

#include "common/ZvtModelModel.h"

#include <QJSEngine>

#include <algorithm>
#include <array>

namespace
{

ObjectListModel *makeList()
{
    auto *const list = new ObjectListModel(true, nullptr);
    QJSEngine::setObjectOwnership(list, QJSEngine::CppOwnership);
    return list;
}

// The lists of a table hold nothing else.
ZvtModelModel *rowOf(const ObjectListModel *list, int number) { return static_cast<ZvtModelModel *>(list->at(number)); }

// The texts are asked for one by one, since most of them are looked up in the SDK.
bool holdsWord(const ZvtModelModel &row, const QString &word)
{
    using Row = ZvtModelModel;
    static constexpr std::array texts{&Row::name,         &Row::boardSetName,    &Row::detectorTypeName,
                                      &Row::roicTypeName, &Row::pleoraBoardName, &Row::variantName,
                                      &Row::typeName,     &Row::subTypeName};
    return std::any_of(texts.begin(), texts.end(),
                       [&](auto text) { return (row.*text)().contains(word, Qt::CaseInsensitive); });
}

} // namespace

ZvtModelTable::ZvtModelTable(QObject *parent) : QObject(parent), m_models(makeList()), m_filteredModels(makeList())
{
    const int count = ZvtModelModel::count();
    for (int number = 0; number < count; ++number)
        m_models->append(new ZvtModelModel(number));
    updateFilteredModels();
}

ZvtModelTable::~ZvtModelTable()
{
    emptyFilteredModels();
    delete m_filteredModels;
    delete m_models;
}

void ZvtModelTable::setTextFilter(const QString &text)
{
    if (text == m_textFilter)
        return;
    m_textFilter = text;
    emit textFilterChanged();
    updateFilteredModels();
}

void ZvtModelTable::setBoardTypeFilter(int boardSet)
{
    if (boardSet < 0)
        return;
    m_boardTypeFilter = boardSet;
    emit boardTypeFilterChanged();
    updateIfNumbersComplete();
}

void ZvtModelTable::setDetectorTypeFilter(int detector)
{
    if (detector == m_detectorTypeFilter)
        return;
    m_detectorTypeFilter = detector;
    emit detectorTypeFilterChanged();
    updateIfNumbersComplete();
}

void ZvtModelTable::setReadoutTypeFilter(int readout)
{
    if (readout == m_readoutTypeFilter)
        return;
    m_readoutTypeFilter = readout;
    emit readoutTypeFilterChanged();
    updateIfNumbersComplete();
}

int ZvtModelTable::getIndexBasedOnCameraInfo(int boardType, int cameraType, int cameraSubType, int detectorType,
                                             int roicType) const
{
    for (int number = 0; number < m_filteredModels->size(); ++number) {
        const ZvtModelModel &row = *rowOf(m_filteredModels, number);
        if (row.boardSet() == boardType && row.type() == cameraType && row.subType() == cameraSubType
            && row.detectorType() == detectorType && row.roicType() == roicType)
            return number;
    }
    return -1;
}

void ZvtModelTable::updateIfNumbersComplete()
{
    if (m_boardTypeFilter >= 0 && m_detectorTypeFilter >= 0 && m_readoutTypeFilter >= 0)
        updateFilteredModels();
}

// Each list takes the rows that it holds for its own, but they are the full list's for life: it gets them back.
void ZvtModelTable::emptyFilteredModels()
{
    m_filteredModels->detachAll();
    for (int number = 0; number < m_models->size(); ++number)
        rowOf(m_models, number)->setParent(m_models);
}

void ZvtModelTable::updateFilteredModels()
{
    emptyFilteredModels();
    const QStringList words = m_textFilter.split(u' ', Qt::SkipEmptyParts);
    for (int number = 0; number < m_models->size(); ++number) {
        ZvtModelModel *const row = rowOf(m_models, number);
        if (passes(*row, words))
            m_filteredModels->append(row);
    }
    emit filteredModelsChanged();
}

bool ZvtModelTable::passes(const ZvtModelModel &row, const QStringList &words) const
{
    // Without a text the board set alone says whether the numbers filter; with one, any missing number lets all pass.
    if (m_textFilter.isEmpty())
        return m_boardTypeFilter < 0 || passesNumbers(row);
    if (!std::all_of(words.begin(), words.end(), [&](const QString &word) { return holdsWord(row, word); }))
        return false;
    return m_boardTypeFilter < 0 || m_detectorTypeFilter < 0 || m_readoutTypeFilter < 0 || passesNumbers(row);
}

bool ZvtModelTable::passesNumbers(const ZvtModelModel &row) const
{
    return row.boardSet() == m_boardTypeFilter && row.detectorType() == m_detectorTypeFilter
        && row.roicType() == m_readoutTypeFilter;
}

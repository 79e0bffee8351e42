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

// Every object in the lists of a table is a ZvtModelModel.
ZvtModelModel *rowAt(const ObjectListModel *list, int number) { return static_cast<ZvtModelModel *>(list->at(number)); }

// Stops at the first match, since most of the texts are looked up in the SDK.
bool containsWord(const ZvtModelModel &row, const QString &word)
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
        const ZvtModelModel &row = *rowAt(m_filteredModels, number);
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

// A list becomes the parent of each object appended to it. The full list must stay the owner of all rows, so it becomes
// their parent again.
void ZvtModelTable::emptyFilteredModels()
{
    m_filteredModels->detachAll();
    for (int number = 0; number < m_models->size(); ++number)
        rowAt(m_models, number)->setParent(m_models);
}

void ZvtModelTable::updateFilteredModels()
{
    emptyFilteredModels();
    const QStringList words = m_textFilter.split(u' ', Qt::SkipEmptyParts);
    for (int number = 0; number < m_models->size(); ++number) {
        ZvtModelModel *const row = rowAt(m_models, number);
        if (passes(*row, words))
            m_filteredModels->append(row);
    }
    emit filteredModelsChanged();
}

bool ZvtModelTable::passes(const ZvtModelModel &row, const QStringList &words) const
{
    // Without a text the numbers filter as soon as the board set is set; with a text, only when all three are set.
    if (m_textFilter.isEmpty())
        return m_boardTypeFilter < 0 || passesNumbers(row);
    if (!std::all_of(words.begin(), words.end(), [&](const QString &word) { return containsWord(row, word); }))
        return false;
    return m_boardTypeFilter < 0 || m_detectorTypeFilter < 0 || m_readoutTypeFilter < 0 || passesNumbers(row);
}

bool ZvtModelTable::passesNumbers(const ZvtModelModel &row) const
{
    return row.boardSet() == m_boardTypeFilter && row.detectorType() == m_detectorTypeFilter
        && row.roicType() == m_readoutTypeFilter;
}

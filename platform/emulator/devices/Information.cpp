#include "platform/emulator/devices/Information.h"

namespace emulator
{

Information::Information(Camera &camera, Section &section) : Device(camera)
{
    const QString key = QStringLiteral("rows");
    const QString separator = QStringLiteral(": ");
    for (const QString &row : section.texts(key, {})) {
        const auto separatorIndex = row.indexOf(separator);
        if (separatorIndex <= 0)
            section.refuse(key, QStringLiteral("must be texts like \"Name: value\""));
        m_rows.emplace_back(row.left(separatorIndex).toStdString(),
                            row.mid(separatorIndex + separator.size()).toStdString());
    }
}

} // namespace emulator

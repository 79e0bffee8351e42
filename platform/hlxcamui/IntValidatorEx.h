#pragma once

#include <QIntValidator>

namespace hlx::cam::ui
{

/// Accepts the whole numbers from `bottom` to `top`, both included, that are multiples of `increment`. GUI thread only.
class IntValidatorEx : public QIntValidator
{
    Q_OBJECT
    /// Below 2 every number of the range is accepted.
    Q_PROPERTY(int increment READ increment WRITE setIncrement NOTIFY incrementChanged)

public:
    explicit IntValidatorEx(QObject *parent = nullptr);

    int increment() const { return m_increment; }
    void setIncrement(int increment);

    State validate(QString &input, int &position) const override;
    /// Turns a number into the nearest one that is accepted, where there is any.
    void fixup(QString &input) const override;

signals:
    void incrementChanged();

private:
    int m_increment = 1;
};

} // namespace hlx::cam::ui

#pragma once

#include <QIntValidator>

namespace hlx::cam::ui
{

/// Accepts the integers from `bottom` to `top`, both included, that are multiples of `increment`. GUI thread only.
class IntValidatorEx : public QIntValidator
{
    Q_OBJECT
    /// With a value below 2 every number in the range is accepted.
    Q_PROPERTY(int increment READ increment WRITE setIncrement NOTIFY incrementChanged)

public:
    explicit IntValidatorEx(QObject *parent = nullptr);

    int increment() const { return m_increment; }
    void setIncrement(int increment);

    State validate(QString &input, int &position) const override;
    /// Replaces a number by the nearest accepted one, if there is any.
    void fixup(QString &input) const override;

signals:
    void incrementChanged();

private:
    int m_increment = 1;
};

} // namespace hlx::cam::ui

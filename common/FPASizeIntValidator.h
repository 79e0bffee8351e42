#pragma once

#include <QValidator>

/// Validates the width or height of a window in pixels: a decimal multiple of 4 from minSize() to maxSize(). GUI thread
/// only.
class FPASizeIntValidator : public QValidator
{
    Q_OBJECT
    Q_PROPERTY(int minSize READ minSize WRITE setMinSize NOTIFY minSizeChanged FINAL)
    Q_PROPERTY(int maxSize READ maxSize WRITE setMaxSize NOTIFY maxSizeChanged FINAL)
    Q_PROPERTY(
        int requiredIncrement READ requiredIncrement WRITE setRequiredIncrement NOTIFY requiredIncrementChanged FINAL)

public:
    explicit FPASizeIntValidator(QObject *parent = nullptr);

    /// The smallest accepted number, in pixels. Starts at 0.
    int minSize() const { return m_minSize; }
    void setMinSize(int size);

    /// The largest accepted number, in pixels. Starts at 0.
    int maxSize() const { return m_maxSize; }
    void setMaxSize(int size);

    /// Stored for the page only: validate() always asks for multiples of 4.
    int requiredIncrement() const { return m_requiredIncrement; }
    void setRequiredIncrement(int increment);

    /// Returns Invalid for a text that is not a number and for a number outside the limits, Intermediate for an empty
    /// text and for a number within the limits that is not a multiple of 4, else Acceptable.
    State validate(QString &input, int &pos) const override;

signals:
    void minSizeChanged();
    void maxSizeChanged();
    void requiredIncrementChanged();

private:
    int m_minSize = 0;
    int m_maxSize = 0;
    int m_requiredIncrement = 0;
};

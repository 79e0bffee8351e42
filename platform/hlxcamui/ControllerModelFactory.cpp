#include "hlxui/IControllerModelFactory.h"

#include <algorithm>
#include <vector>

namespace hlx::cam::ui
{

namespace
{

class ControllerModelFactory final : public IControllerModelFactory
{
public:
    bool CreateModel(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model,
                     QString &qml) override
    {
        return std::any_of(m_creators.begin(), m_creators.end(),
                           [&](ModelCreator create) { return create(controller, parent, model, qml); });
    }

    int CreatorCount() const override { return static_cast<int>(m_creators.size()); }

    void UnregisterModelCreator(ModelCreator creator) override { std::erase(m_creators, creator); }

    void RegisterModelCreator(ModelCreator creator) override
    {
        if (std::find(m_creators.begin(), m_creators.end(), creator) == m_creators.end())
            m_creators.push_back(creator);
    }

private:
    std::vector<ModelCreator> m_creators;
};

} // namespace

IControllerModelFactory::~IControllerModelFactory() = default;

IControllerModelFactory *controllerModelFactory()
{
    static ControllerModelFactory factory;
    return &factory;
}

} // namespace hlx::cam::ui

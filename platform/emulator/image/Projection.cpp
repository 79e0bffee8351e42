#include "platform/emulator/image/Projection.h"

#include "platform/emulator/image/geometry.h"
#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cmath>

namespace emulator::image
{

namespace
{

// An edge is half a pixel soft on both sides because of the size of a pixel.
constexpr double pixelSoftness = 0.5;
constexpr double softnessPerDefocus = 2.5;
constexpr double maximumDefocus = 1000;

/// The share of a pixel that lies beyond a soft edge: 0 at -1 and below, 1 at 1 and above. It has no branches, so that
/// loops with it are vectorized.
double softStep(double x)
{
    x = x > -1 ? x : -1;
    x = x < 1 ? x : 1;
    const double t = (x + 1) / 2;
    return t * t * (3 - 2 * t);
}

/// The mean of the squared radius of a disc whose edge is soft by `blur` on both sides, not beyond its centre. A sharp
/// disc of this squared radius has the same light.
double meanSquaredRadius(double radius, double blur)
{
    if (radius >= blur)
        return radius * radius + blur * blur / 5;
    const double a = radius / blur;
    return blur * blur * (0.1 + a * (0.375 + a * (0.5 + a * (0.25 - a * a * 0.025))));
}

} // namespace

Projection::Projection(const Scene &scene, const Optics &optics, Light::Band band, const Size &array,
                       const Window &window)
    : m_band(band), m_unit(within(1, optics.magnification, Optics::maximumMagnification) * array.height),
      m_softness(pixelSoftness), m_blur(softnessPerDefocus * within(0, optics.defocus, maximumDefocus)),
      m_centreX(array.width / 2.0 - window.x), m_centreY(array.height / 2.0 - window.y),
      m_transmission(static_cast<float>(optics.transmission)), m_glow(static_cast<float>(optics.glow(band))),
      m_flagLight(static_cast<float>(Light::of(optics.flagCelsius, band)) * m_transmission + m_glow),
      m_flagEnd(static_cast<size_t>(
          within(0, std::round(optics.flagCover * array.width) - window.x, static_cast<double>(window.width)))),
      m_sum(static_cast<size_t>(window.width)), m_row(static_cast<size_t>(window.width))
{
    m_softness += m_blur;
    for (int x = 0; x < window.width; ++x)
        m_shadingColumns.push_back(squaredDistance(window.x + x, array.width, array));
    const double top = Light::of(optics.blocked ? optics.lensCelsius : scene.topCelsius(), band);
    const double bottom = Light::of(optics.blocked ? optics.lensCelsius : scene.bottomCelsius(), band);
    for (int y = 0; y < window.height; ++y) {
        m_shadingRows.push_back(squaredDistance(window.y + y, array.height, array));
        const double height = within(0, (y + 0.5 - m_centreY) / m_unit + 0.5, 1);
        m_behind.push_back(static_cast<float>(top + (bottom - top) * height));
    }
    if (optics.blocked)
        return;
    for (const Scene::Layer &layer : scene.layers())
        addLayer(layer);
    for (const Scene::Disc &disc : scene.discs())
        addDisc(disc);
    m_shares.assign(m_layers.size(), 0);
}

std::vector<float> Projection::axis(const Scene::Stripes &stripes, double centre, int length) const
{
    std::vector<float> shares(static_cast<size_t>(length));
    for (int stripe = 0; stripe < stripes.count; ++stripe) {
        const double start = centre + m_unit * (stripes.start + stripe * stripes.pitch);
        const double end = start + m_unit * stripes.width;
        const auto first = static_cast<int>(within(0, std::floor(start - m_softness), length));
        const auto last = static_cast<int>(within(0, std::ceil(end + m_softness), length));
        for (int i = first; i < last; ++i)
            shares[static_cast<size_t>(i)] += static_cast<float>(softStep((i + 0.5 - start) / m_softness)
                                                                 - softStep((i + 0.5 - end) / m_softness));
    }
    return shares;
}

void Projection::addLayer(const Scene::Layer &layer)
{
    Layer drawn;
    drawn.columns = axis(layer.columns, m_centreX, static_cast<int>(m_row.size()));
    drawn.rows = axis(layer.rows, m_centreY, static_cast<int>(m_behind.size()));
    const auto isLit = [](float share) { return share != 0; };
    const auto begin = drawn.columns.begin();
    drawn.first = static_cast<size_t>(std::find_if(begin, drawn.columns.end(), isLit) - begin);
    drawn.end = static_cast<size_t>(std::find_if(drawn.columns.rbegin(), drawn.columns.rend(), isLit).base() - begin);
    if (drawn.first >= drawn.end || std::ranges::none_of(drawn.rows, isLit))
        return;
    const auto light = static_cast<float>(Light::of(layer.to, m_band) - Light::of(layer.from, m_band));
    for (float &column : drawn.columns)
        column *= light;
    drawn.brightest = std::max(0.0f, *std::ranges::max_element(drawn.columns));
    m_layers.push_back(std::move(drawn));
}

void Projection::addDisc(const Scene::Disc &disc)
{
    const double radius = m_unit * disc.radius;
    m_discs.push_back({m_centreX + m_unit * disc.x, m_centreY + m_unit * disc.y, radius,
                       static_cast<float>(radius * radius / meanSquaredRadius(radius, m_blur)),
                       static_cast<float>(Light::of(disc.celsius, m_band))});
}

void Projection::addUpLayers(size_t y)
{
    bool changed = false;
    for (size_t i = 0; i < m_layers.size(); ++i)
        if (const float share = m_layers[i].rows[y]; share != m_shares[i]) {
            m_shares[i] = share;
            changed = true;
        }
    // Most rows of a sharp picture have the same layers as the row before.
    if (!changed)
        return;
    std::ranges::fill(m_sum, 0.0f);
    for (size_t i = 0; i < m_layers.size(); ++i)
        if (m_shares[i] != 0)
            for (size_t x = m_layers[i].first; x < m_layers[i].end; ++x)
                m_sum[x] += m_shares[i] * m_layers[i].columns[x];
}

/// The share of the disc in a pixel at a distance from its centre.
inline float Projection::shareOf(const Disc &disc, double distance) const
{
    return disc.share * static_cast<float>(softStep((disc.radius - distance) / m_softness));
}

void Projection::draw(const Disc &disc, int y)
{
    const double dy = y + 0.5 - disc.y;
    const double outer = disc.radius + m_softness;
    if (dy * dy >= outer * outer)
        return;
    const double half = std::sqrt(outer * outer - dy * dy);
    const auto width = double(m_row.size());
    const auto first = static_cast<int>(within(0, std::floor(disc.x - half), width));
    const auto last = static_cast<int>(within(0, std::ceil(disc.x + half), width));
    float *const row = m_row.data();
    for (int x = first; x < last; ++x) {
        const double dx = x + 0.5 - disc.x;
        row[x] += shareOf(disc, std::sqrt(dx * dx + dy * dy)) * (disc.light - row[x]);
    }
}

float Projection::brightest(int y) const
{
    const auto index = static_cast<size_t>(y);
    float light = m_behind[index];
    for (const Layer &layer : m_layers)
        light += layer.rows[index] * layer.brightest;
    for (const Disc &disc : m_discs)
        light += shareOf(disc, std::abs(y + 0.5 - disc.y)) * std::max(0.0f, disc.light - light);
    light = std::max(0.0f, light * m_transmission) + m_glow;
    return m_flagEnd > 0 ? std::max(light, m_flagLight) : light;
}

std::span<const float> Projection::row(int y)
{
    const auto index = static_cast<size_t>(y);
    addUpLayers(index);
    const float behind = m_behind[index];
    for (size_t x = 0; x < m_row.size(); ++x)
        m_row[x] = behind + m_sum[x];
    for (const Disc &disc : m_discs)
        draw(disc, y);
    const float rowShading = m_shadingRows[index];
    for (size_t x = 0; x < m_row.size(); ++x)
        m_row[x] = m_row[x] * Optics::shading(m_shadingColumns[x] + rowShading) * m_transmission + m_glow;
    // The flag is behind the lens, so the lens does not shade it.
    std::fill_n(m_row.begin(), m_flagEnd, m_flagLight);
    return m_row;
}

} // namespace emulator::image

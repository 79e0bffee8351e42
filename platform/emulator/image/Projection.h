#pragma once

#include "platform/emulator/image/Light.h"
#include "platform/emulator/image/Optics.h"
#include "platform/emulator/image/Scene.h"
#include "platform/emulator/image/Window.h"

#include <span>
#include <vector>

namespace emulator::image
{

/// The light that a scene sends through a lens to a window of an array, row by row. Edges are drawn as soft as the
/// defocus makes them, so nothing is blurred afterwards, and a row needs no other rows. A smaller window of the same
/// array shows the same light. Used by one thread.
class Projection
{
public:
    Projection(const Scene &scene, const Optics &optics, Light::Band band, const Size &array, const Window &window);

    /// Returns at least the light of the brightest pixel of a row, in much less time than row().
    float brightest(int y) const;

    /// Returns the light of each pixel of a row of the window. It is valid until the next call. Neighbouring rows are
    /// quickest when they are asked for one after the other.
    std::span<const float> row(int y);

private:
    struct Layer {
        std::vector<float> columns; ///< The light that the layer adds at each column.
        std::vector<float> rows; ///< The share of it at each row.
        size_t first = 0; ///< The columns to which it adds: from here
        size_t end = 0; ///< to before here.
        float brightest = 0; ///< The most that it adds, not below 0.
    };

    struct Disc {
        double x; ///< Pixels of the window.
        double y;
        double radius; ///< Pixels, to the middle of the soft edge.
        float share; ///< A disc that is smaller than its blur covers only a share of the scene behind.
        float light;
    };

    std::vector<float> axis(const Scene::Stripes &stripes, double centre, int length) const;
    void addLayer(const Scene::Layer &layer);
    void addDisc(const Scene::Disc &disc);
    void addUpLayers(size_t y);
    float shareOf(const Disc &disc, double distance) const;
    void draw(const Disc &disc, int y);

    Light::Band m_band;
    double m_unit; ///< Pixels of a unit of the scene.
    double m_softness; ///< Half of the width of an edge in pixels.
    double m_blur; ///< The part of it that comes from the defocus.
    double m_centreX; ///< The centre of the field in pixels of the window.
    double m_centreY;
    std::vector<Layer> m_layers;
    std::vector<Disc> m_discs;
    float m_transmission; ///< Of the filter.
    float m_glow;
    float m_flagLight; ///< The light of the flag, behind the filter.
    size_t m_flagEnd; ///< The flag covers the columns of the window to before here.
    std::vector<float> m_behind; ///< The light behind all layers, for each row.
    std::vector<float> m_shadingColumns; ///< The parts of the squared distance from the centre.
    std::vector<float> m_shadingRows;
    std::vector<float> m_shares; ///< The share of each layer in m_sum.
    std::vector<float> m_sum; ///< The light of all layers of the row before.
    std::vector<float> m_row;
};

} // namespace emulator::image

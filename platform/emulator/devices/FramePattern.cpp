#include "platform/emulator/devices/FramePattern.h"

#include <algorithm>

namespace emulator
{

namespace
{

// Both operands are at most FramePattern::farthest.
constexpr uint64_t sum(uint64_t a, uint64_t b) { return std::min(a + b, FramePattern::farthest); }

constexpr uint64_t product(uint64_t a, uint64_t b)
{
    return a != 0 && b > FramePattern::farthest / a ? FramePattern::farthest : a * b;
}

uint64_t widthOf(const FramePattern::Turn &turn) { return product(turn.repeats, turn.width); }

} // namespace

FramePattern::FramePattern(const Turns &turns, uint64_t cycleWidth) : m_turns(turns)
{
    uint64_t width = 0;
    for (Turn &turn : m_turns) {
        // Equal patterns are equal values: the width of a turn without frames means nothing.
        turn.width = turn.repeats > 0 ? std::max(turn.width, 1u) : 0;
        m_frames += turn.repeats;
        width = sum(width, widthOf(turn));
    }
    m_cycleWidth = m_frames > 0 ? std::clamp(cycleWidth, width, farthest) : 0;
}

uint64_t FramePattern::begun(uint64_t units) const
{
    if (m_frames == 0)
        return 0;
    uint64_t count = units / m_cycleWidth * m_frames;
    uint64_t rest = units % m_cycleWidth;
    for (const Turn &turn : m_turns) {
        if (turn.repeats == 0)
            continue;
        const uint64_t width = widthOf(turn);
        if (rest < width)
            return count + rest / turn.width + 1;
        count += turn.repeats;
        rest -= width;
    }
    return count;
}

FramePattern::Place FramePattern::place(uint64_t frame) const
{
    uint64_t offset = product(frame / m_frames, m_cycleWidth);
    uint64_t rest = frame % m_frames;
    int preset = 0;
    for (; rest >= m_turns[static_cast<size_t>(preset)].repeats; ++preset) {
        const Turn &turn = m_turns[static_cast<size_t>(preset)];
        offset = sum(offset, widthOf(turn));
        rest -= turn.repeats;
    }
    return {preset, sum(offset, product(rest, m_turns[static_cast<size_t>(preset)].width))};
}

std::optional<uint64_t> FramePattern::newest(int preset, uint64_t count) const
{
    if (preset < 0 || preset >= maximumPresets)
        return {};
    const uint64_t repeats = m_turns[static_cast<size_t>(preset)].repeats;
    if (repeats == 0)
        return {};
    uint64_t first = 0;
    for (int before = 0; before < preset; ++before)
        first += m_turns[static_cast<size_t>(before)].repeats;
    const uint64_t cycles = count / m_frames;
    const uint64_t rest = count % m_frames;
    if (rest > first)
        return cycles * m_frames + std::min(rest, first + repeats) - 1;
    if (cycles > 0)
        return (cycles - 1) * m_frames + first + repeats - 1;
    return {};
}

} // namespace emulator

// The reduction of a picture's colours by a tree of colour boxes.
#include "gfx/clsDIBSection.h"
#include "gfx/clsPalette.h"
#include "gfx/rounding.h"
#include "platform/base/failure.h"
#include "platform/window/dialogs.h"

#include <array>
#include <cstdlib>

namespace {

constexpr int kMostLevels = 8;

// ---- The way of a colour through the tree

// For each value of a channel its half at each level: bit 3 * (8 - level), set for the upper one.
// The halves of a range share its middle as an end, and a value at the middle goes to the lower.
constexpr std::array<std::uint32_t, 256> channelHalves() {
    std::array<std::uint32_t, 256> halves{};
    for (int value = 0; value < 256; ++value) {
        int low = 0, high = 255;
        for (int level = 1; level <= kMostLevels; ++level) {
            const int sum = low + high;
            const int middle = sum / 2 + (sum % 2 != 0 && sum / 2 % 2 != 0 ? 1 : 0);
            if (value <= middle) {
                high = middle;
            } else {
                low = middle;
                halves[static_cast<std::size_t>(value)] |= 1U << 3 * (kMostLevels - level);
            }
        }
    }
    return halves;
}
constexpr std::array<std::uint32_t, 256> kHalves = channelHalves();

// The child's position r + 2 * (g + 2 * b) at all levels, three bits each, the first one highest.
std::uint32_t pathOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return kHalves[red] | kHalves[green] << 1 | kHalves[blue] << 2;
}

// ---- The tree

struct OctreeNode {
    std::array<std::int32_t, 8> aiChild{};  // numbers of nodes, 0 for none
    // Of a leaf: the sums of its pixels. Wide, as a large picture has more than 2^31 / 255 pixels.
    std::int64_t lRed = 0, lGreen = 0, lBlue = 0;
    std::int64_t lCount = 0;  // of a leaf: its pixels; else the children
    std::int32_t iNext = 0;   // in a list of m_aiReducible or of free nodes
    bool bLeaf = false;
    bool bReducible = false;
};

class Octree {
public:
    explicit Octree(int levels) : m_iLevels(levels), m_aNodes(1 + kFirstPool) {}

    // Adds a pixel to its leaf.
    void pvAddColour(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        const std::uint32_t path = pathOf(red, green, blue);
        if (m_lLastLeaf == 0 || path != m_lastPath) {
            m_lLastLeaf = leafOf(path);
            m_lastPath = path;
        }
        OctreeNode& leaf = node(m_lLastLeaf);
        if (leaf.lCount == 0) ++m_lLeaves;
        ++leaf.lCount;
        leaf.lRed += red;
        leaf.lGreen += green;
        leaf.lBlue += blue;
    }

    // Makes a leaf of the inner node that was listed last at the deepest level. False when there is
    // none but the root.
    bool pvReduce() {
        int level = m_iLevels;
        while (level >= 1 && listOf(level) == 0) --level;
        if (level == 0) return false;
        m_lLastLeaf = 0;
        OctreeNode& reduced = node(listOf(level));
        listOf(level) = reduced.iNext;
        reduced.lCount = 0;
        for (std::int32_t& iChild : reduced.aiChild) {
            if (iChild == 0) continue;
            const OctreeNode& child = node(iChild);
            reduced.lRed += child.lRed;
            reduced.lGreen += child.lGreen;
            reduced.lBlue += child.lBlue;
            reduced.lCount += child.lCount;
            pvFreeNode(iChild);
            --m_lLeaves;
            iChild = 0;
        }
        ++m_lLeaves;
        reduced.bLeaf = true;
        return true;
    }

    [[nodiscard]] std::int32_t leaves() const { return m_lLeaves; }

    // Calls f with every leaf, in the order of the pool.
    template <class F> void forLeaves(F f) const {
        for (const OctreeNode& leaf : m_aNodes) {
            if (leaf.bLeaf) f(leaf);
        }
    }

private:
    static constexpr std::size_t kFirstPool = 50;
    static constexpr std::int32_t kRoot = 1;

    OctreeNode& node(std::int32_t i) { return m_aNodes[static_cast<std::size_t>(i)]; }
    std::int32_t& listOf(int level) { return m_aiReducible[static_cast<std::size_t>(level - 1)]; }

    std::int32_t leafOf(std::uint32_t path) {
        std::int32_t iNode = kRoot;
        for (int level = 1;; ++level) {
            const std::size_t half = path >> 3 * (kMostLevels - level) & 7;
            std::int32_t iChild = node(iNode).aiChild[half];
            if (iChild == 0) {
                iChild = pvNewNode();  // can move all nodes
                node(iNode).aiChild[half] = iChild;
                ++node(iNode).lCount;
                node(iChild).bLeaf = level == m_iLevels;
            }
            OctreeNode& child = node(iChild);
            if (child.bLeaf) return iChild;
            if (!child.bReducible) {
                child.bReducible = true;
                child.iNext = listOf(level);
                listOf(level) = iChild;
            }
            iNode = iChild;
        }
    }

    // The number of an empty node: the one that was freed last, or the next of the pool.
    std::int32_t pvNewNode() {
        ++m_lUsedNodes;
        if (m_lFreeNode != 0) {
            const std::int32_t iNode = m_lFreeNode;
            m_lFreeNode = node(iNode).iNext;
            node(iNode) = OctreeNode();
            return iNode;
        }
        if (static_cast<std::size_t>(m_lUsedNodes) >= m_aNodes.size()) {
            m_aNodes.resize(1 + static_cast<std::size_t>(gfx::roundHalfEven(m_lUsedNodes * 1.1)));
        }
        return m_lUsedNodes;
    }

    void pvFreeNode(std::int32_t iNode) {
        OctreeNode& freed = node(iNode);
        freed.iNext = m_lFreeNode;
        freed.bLeaf = freed.bReducible = false;
        m_lFreeNode = iNode;
        --m_lUsedNodes;
    }

    int m_iLevels;                     // m_bLevels, as wide as what it is compared with
    std::vector<OctreeNode> m_aNodes;  // from 1; 1 is the root
    std::int32_t m_lUsedNodes = 1;
    std::int32_t m_lFreeNode = 0;
    std::int32_t m_lLeaves = 0;
    std::array<std::int32_t, kMostLevels> m_aiReducible{};  // by level, from 1
    // Neighbours are often equal: the leaf of the pixel before, 0 when it may be gone.
    std::int32_t m_lLastLeaf = 0;
    std::uint32_t m_lastPath = 0;
};

// ---- When nothing can be reduced

std::function<void()>& programStop() {
    static std::function<void()> stop;
    return stop;
}

void askWhetherToGoOn() {
    const int answer =
        platform::MessageBoxW(0, u"Error in reducing nodes", u"Quillmere", platform::MB_YESNO);
    if (answer != platform::IDNO) return;
    if (programStop()) {
        programStop()();
    } else {
        std::exit(EXIT_FAILURE);
    }
}

}  // namespace

void setProgramStop(std::function<void()> stop) { programStop() = std::move(stop); }

void clsPalette::CreateOptimal(const clsDIBSection& oDib, std::int32_t lMaxColors,
                               std::int32_t lLevels, std::optional<Color> vFirstColor) {
    if (oDib.Bpp() != 24) {
        const Text source = u"clsPalette.ApplyPalette";
        throw Failure(kOwnError, source, source + u".DIB Must be 24 bpp");
    }
    if (lLevels < 1 || lLevels > kMostLevels) {
        throw Failure(kOwnError, u"clsPalette.CreateOptimal",
                      u"The tree of colours has from 1 to 8 levels!");
    }

    Octree tree(lLevels);
    const std::uint8_t* line = oDib.BitsPtr();
    // A surface whose making failed knows its size, but has no pixels.
    const int lines = line != nullptr ? oDib.Height() : 0;
    for (int y = 0; y < lines; ++y, line += oDib.BytesPerScanLine()) {
        const std::uint8_t* const end = line + static_cast<std::ptrdiff_t>(oDib.Width()) * 3;
        for (const std::uint8_t* pixel = line; pixel != end; pixel += 3) {
            tree.pvAddColour(pixel[2], pixel[1], pixel[0]);
            while (tree.leaves() > lMaxColors) {
                if (tree.pvReduce()) continue;
                askWhetherToGoOn();
                break;
            }
        }
    }

    Destroy();
    if (vFirstColor) {
        std::int16_t red = 0, green = 0, blue = 0;
        pColorToComponents(*vFirstColor, red, green, blue);
        Add(static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
            static_cast<std::uint8_t>(blue));
    }
    tree.forLeaves([this](const OctreeNode& leaf) {
        const auto average = [&leaf](std::int64_t sum) {
            return static_cast<std::uint8_t>(gfx::roundedQuotient(sum, leaf.lCount));
        };
        Add(average(leaf.lRed), average(leaf.lGreen), average(leaf.lBlue));
    });
}

#include "Platform/Linux/DirectWrite/SetText.h"

#include <algorithm>
#include <limits>

namespace Platform::DirectWrite {

namespace {

bool Marked(const std::vector<bool>& marks, UINT32 position) {
    return position < marks.size() && marks[position];
}

// Clusters of one run and direction side by side in a line.
struct Segment {
    std::size_t first;
    std::size_t end;
    unsigned level;
    float width;
};

class Setter {
public:
    Setter(ShapedText& text, const TextBox& box, const TextMarks& marks) : text_(text), box_(box), marks_(marks) {}

    TextContent Set() {
        std::vector<Line> lines = BreakLines(text_, box_);
        for (Line& line : lines) {
            if (box_.alignment == DWRITE_TEXT_ALIGNMENT_JUSTIFIED && line.wrapped) Justify(line);
            BoxLine(line);
        }
        Measure(lines);
        for (std::size_t i = 0; i < lines.size(); ++i) Place(lines[i], content_.lines[i]);
        if (!inked_) content_.ink = {};
        content_.glyphs = std::move(text_.glyphs);
        content_.advances = std::move(text_.advances);
        content_.offsets = std::move(text_.offsets);
        return std::move(content_);
    }

private:
    // Spreads what is left of the line over the white space between its words.
    void Justify(Line& line) {
        const float left = box_.width - line.width;
        const auto isGap = [](const Cluster& cluster) { return cluster.white && cluster.glyphCount > 0; };
        const auto begin = text_.clusters.begin() + static_cast<std::ptrdiff_t>(line.first);
        const auto end = text_.clusters.begin() + static_cast<std::ptrdiff_t>(line.last);
        const auto gaps = std::count_if(begin, end, isGap);
        if (gaps == 0 || !(left > 0.0F)) return;
        const float each = left / static_cast<float>(gaps);
        for (auto cluster = begin; cluster != end; ++cluster) {
            if (!isGap(*cluster)) continue;
            cluster->width += each;
            text_.advances[cluster->glyph + cluster->glyphCount - 1] += each;
        }
        line.fullWidth += left;
        line.width = box_.width;
    }

    // The line's height: room for all that is in it.
    void BoxLine(const Line& line) {
        LineBox box = line.first == line.end ? text_.emptyLine : LineBox{};
        UINT32 run = std::numeric_limits<UINT32>::max();
        for (std::size_t i = line.first; i < line.end; ++i) {
            if (text_.clusters[i].run == run) continue;
            run = text_.clusters[i].run;
            box.ascent = std::max(box.ascent, text_.runs[run].box.ascent);
            box.descent = std::max(box.descent, text_.runs[run].box.descent);
        }
        UINT32 white = line.newlineLength;
        for (std::size_t i = line.last; i < line.end; ++i) white += text_.clusters[i].length;
        content_.lines.push_back({line.length, white, line.newlineLength, box.ascent + box.descent, box.ascent, FALSE});
    }

    float LeftOf(const Line& line) const {
        switch (box_.alignment) {
            case DWRITE_TEXT_ALIGNMENT_TRAILING:
                return box_.width - line.width;
            case DWRITE_TEXT_ALIGNMENT_CENTER:
                return (box_.width - line.width) / 2;
            default:
                return 0.0F;
        }
    }

    void Measure(const std::vector<Line>& lines) {
        DWRITE_TEXT_METRICS& metrics = content_.metrics;
        metrics.left = std::numeric_limits<float>::max();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            metrics.left = std::min(metrics.left, LeftOf(lines[i]));
            metrics.width = std::max(metrics.width, lines[i].width);
            metrics.widthIncludingTrailingWhitespace =
                std::max(metrics.widthIncludingTrailingWhitespace, lines[i].fullWidth);
            metrics.height += content_.lines[i].height;
        }
        if (box_.paragraphAlignment == DWRITE_PARAGRAPH_ALIGNMENT_FAR) metrics.top = box_.height - metrics.height;
        if (box_.paragraphAlignment == DWRITE_PARAGRAPH_ALIGNMENT_CENTER) {
            metrics.top = (box_.height - metrics.height) / 2;
        }
        metrics.layoutWidth = box_.width;
        metrics.layoutHeight = box_.height;
        metrics.lineCount = static_cast<UINT32>(lines.size());
        metrics.maxBidiReorderingDepth = 1;
        y_ = metrics.top;
    }

    void Place(const Line& line, const DWRITE_LINE_METRICS& metrics) {
        FindSegments(line);
        Reorder();
        float x = LeftOf(line);
        const float baseline = y_ + metrics.baseline;
        for (const Segment& segment : segments_) {
            Place(segment, x, baseline);
            x += segment.width;
        }
        y_ += metrics.height;
    }

    void FindSegments(const Line& line) {
        segments_.clear();
        for (std::size_t i = line.first; i < line.end; ++i) {
            const Cluster& cluster = text_.clusters[i];
            // White space at the end goes with the paragraph, which runs to the right.
            const unsigned level = i >= line.last ? 0 : text_.runs[cluster.run].level;
            if (!segments_.empty() && !cluster.tab && GoesWith(text_.clusters[i - 1], cluster) &&
                segments_.back().level == level) {
                segments_.back().end = i + 1;
                segments_.back().width += cluster.width;
            } else {
                segments_.push_back({i, i + 1, level, cluster.width});
            }
        }
    }

    bool GoesWith(const Cluster& before, const Cluster& cluster) const {
        const auto alike = [&](const std::vector<bool>& marks) {
            return Marked(marks, before.text) == Marked(marks, cluster.text);
        };
        return before.run == cluster.run && !before.tab && alike(marks_.underlined) && alike(marks_.struckThrough);
    }

    // From the order of the text to that on the screen: what lies at or above each level is turned round.
    void Reorder() {
        unsigned highest = 0;
        for (const Segment& segment : segments_) highest = std::max(highest, segment.level);
        content_.metrics.maxBidiReorderingDepth = std::max(content_.metrics.maxBidiReorderingDepth, highest + 1);
        for (unsigned level = highest; level > 0; --level) {
            const auto inside = [level](const Segment& segment) { return segment.level >= level; };
            for (auto at = segments_.begin(); at != segments_.end();) {
                const auto first = std::find_if(at, segments_.end(), inside);
                at = std::find_if_not(first, segments_.end(), inside);
                std::reverse(first, at);
            }
        }
    }

    void Place(const Segment& segment, float x, float baseline) {
        const Cluster& first = text_.clusters[segment.first];
        const Cluster& last = text_.clusters[segment.end - 1];
        const ShapedRun& shaped = text_.runs[first.run];
        const std::size_t count = last.glyph + last.glyphCount - first.glyph;
        if (!shaped.face || count == 0) return;
        GlyphRun run{shaped.face,
                     shaped.emSize,
                     segment.level,
                     segment.level % 2 == 1 ? x + segment.width : x,
                     baseline,
                     segment.width,
                     first.glyph,
                     count,
                     first.text,
                     last.text + last.length - first.text,
                     Marked(marks_.underlined, first.text),
                     Marked(marks_.struckThrough, first.text),
                     shaped.box.ascent + shaped.box.descent};
        // A run that is turned for the end of a line keeps its glyphs in the order of the text all the same.
        AddInk(run);
        const FaceMetrics& metrics = shaped.face->Metrics();
        if (run.underlined) AddBar(run, x, metrics.underlineOffset, metrics.underlineThickness);
        if (run.struckThrough) AddBar(run, x, metrics.strikethroughOffset, metrics.strikethroughThickness);
        content_.runs.push_back(std::move(run));
    }

    void AddInk(const GlyphRun& run) {
        GlyphPen pen(run.level % 2 == 1);
        for (std::size_t i = run.first; i < run.first + run.count; ++i) {
            const D2D1_POINT_2F at = pen.Place(text_.advances[i], text_.offsets[i]);
            const D2D1_RECT_F box = run.face->Box(text_.glyphs[i]);
            if (box.left == box.right && box.top == box.bottom) continue;
            const float left = run.x + at.x;
            const float top = run.y + at.y;
            Unite({left + box.left * run.emSize, top + box.top * run.emSize, left + box.right * run.emSize,
                   top + box.bottom * run.emSize});
        }
    }

    void AddBar(const GlyphRun& run, float x, float offset, float thickness) {
        const float top = run.y + offset * run.emSize;
        const D2D1_RECT_F bar{x, top, x + run.width, top + thickness * run.emSize};
        content_.decorations.push_back({bar});
        Unite(bar);
    }

    void Unite(const D2D1_RECT_F& rect) {
        D2D1_RECT_F& ink = content_.ink;
        ink = inked_ ? D2D1_RECT_F{std::min(ink.left, rect.left), std::min(ink.top, rect.top),
                                   std::max(ink.right, rect.right), std::max(ink.bottom, rect.bottom)}
                     : rect;
        inked_ = true;
    }

    ShapedText& text_;
    const TextBox& box_;
    const TextMarks& marks_;
    TextContent content_;
    std::vector<Segment> segments_;  // of the line in hand
    float y_ = 0.0F;
    bool inked_ = false;
};

}  // namespace

TextContent SetText(ShapedText text, const TextBox& box, const TextMarks& marks) {
    return Setter(text, box, marks).Set();
}

}  // namespace Platform::DirectWrite

#include "Platform/Linux/DirectWrite/SetText.h"

#include <cmath>

namespace Platform::DirectWrite {

namespace {

// Text set in a box of its own measured width must not break for a rounding error.
constexpr float tolerance = 0.01F;

class Breaker {
public:
    Breaker(ShapedText& text, const TextBox& box, std::vector<Line>& lines) : text_(text), box_(box), lines_(lines) {}

    void Break(const Paragraph& paragraph) {
        std::size_t at = paragraph.first;
        UINT32 position = paragraph.text;
        do {
            const std::size_t end = EndOfLine(at, paragraph.end);
            const bool last = end == paragraph.end;
            const UINT32 next =
                last ? paragraph.text + paragraph.length + paragraph.newlineLength : text_.clusters[end].text;
            Line line{at, end, end, 0.0F, 0.0F, position, next - position, last ? paragraph.newlineLength : 0, !last};
            while (line.last > at && text_.clusters[line.last - 1].white) --line.last;
            Measure(line);
            lines_.push_back(line);
            at = end;
            position = next;
        } while (at < paragraph.end);
    }

private:
    float WidthAt(const Cluster& cluster, float x) const {
        if (!cluster.tab || !(box_.tabWidth > 0.0F)) return cluster.width;
        return (std::floor(x / box_.tabWidth) + 1.0F) * box_.tabWidth - x;
    }

    void Measure(Line& line) {
        for (std::size_t i = line.first; i < line.end; ++i) {
            Cluster& cluster = text_.clusters[i];
            cluster.width = WidthAt(cluster, line.fullWidth);
            line.fullWidth += cluster.width;
            if (i + 1 == line.last) line.width = line.fullWidth;
        }
    }

    std::size_t EndOfLine(std::size_t first, std::size_t end) const {
        if (box_.wrapping == DWRITE_WORD_WRAPPING_NO_WRAP) return end;
        const bool anywhere = box_.wrapping == DWRITE_WORD_WRAPPING_CHARACTER;
        const bool wordsOnly = box_.wrapping == DWRITE_WORD_WRAPPING_WHOLE_WORD;
        std::size_t lastBreak = first;
        float x = 0.0F;
        for (std::size_t i = first; i < end; ++i) {
            const Cluster& cluster = text_.clusters[i];
            const float width = WidthAt(cluster, x);
            const bool tooWide = i > first && !cluster.white && x + width > box_.width + tolerance;
            if (tooWide && lastBreak > first && !anywhere) return lastBreak;
            if (tooWide && !wordsOnly && (anywhere || lastBreak == first)) {
                if (const std::size_t boundary = BoundaryAt(first, i); boundary > first) return boundary;
            }
            x += width;
            if (cluster.breakAfter) lastBreak = i + 1;
        }
        return end;
    }

    // The last place at or before `at` where a character begins; `first` if there is none in between.
    std::size_t BoundaryAt(std::size_t first, std::size_t at) const {
        while (at > first && !text_.clusters[at].boundary) --at;
        return at;
    }

    ShapedText& text_;
    const TextBox& box_;
    std::vector<Line>& lines_;
};

}  // namespace

std::vector<Line> BreakLines(ShapedText& text, const TextBox& box) {
    std::vector<Line> lines;
    Breaker breaker(text, box, lines);
    for (const Paragraph& paragraph : text.paragraphs) breaker.Break(paragraph);
    return lines;
}

}  // namespace Platform::DirectWrite

#ifndef GNSS_SIM_TIMELINE_SVGWRITER_H
#define GNSS_SIM_TIMELINE_SVGWRITER_H

#include <string>

namespace GnssSim {

// Writes an SVG document element by element: text escaped for XML, coordinates with one decimal
// (the same picture gives the same bytes). Styles are classes of the document's style sheet, so
// that the file holds its structure and nothing else: no scripts, no fonts or images of its own.
class SvgWriter {
public:
    SvgWriter(double width, double height, const std::string& styleSheet);

    // Opens a group, with the tooltip every part of it shows; "" for none.
    void BeginGroup(const std::string& cssClass, const std::string& tooltip = "");
    void EndGroup();

    void Rect(double x, double y, double width, double height, const std::string& cssClass);
    void Line(double x1, double y1, double x2, double y2, const std::string& cssClass);
    // Text whose foot starts at (x, y) and runs at angle degrees clockwise from the horizontal.
    void Text(double x, double y, const std::string& text, const std::string& cssClass, double angle = 0.0);
    // Text of two parts, the first in a class of its own ("3 lost: " before the rest).
    void Text(double x, double y, const std::string& lead, const std::string& leadClass, const std::string& text,
              const std::string& cssClass, double angle = 0.0);
    // Anything else (a pattern among the definitions), as given.
    void Raw(const std::string& markup);

    std::string Finish();

    static std::string Number(double value);
    static std::string Escape(const std::string& text);

private:
    std::string TextOpening(double x, double y, const std::string& cssClass, double angle) const;

    std::string m_document;
};

}

#endif

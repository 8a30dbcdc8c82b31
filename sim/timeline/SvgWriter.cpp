#include "sim/timeline/SvgWriter.h"

#include "sim/text/ByteText.h"

#include <cstdio>

namespace GnssSim {

namespace {

// The length of the well-formed UTF-8 sequence at pos (no overlong form, no surrogate, nothing
// above U+10FFFF), 0 when there is none.
std::size_t Utf8SequenceLength(const std::string& text, std::size_t pos)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    const std::size_t length = lead >= 0xF0 && lead < 0xF5 ? 4 : lead >= 0xE0 && lead < 0xF0 ? 3 : lead >= 0xC2 && lead < 0xE0 ? 2 : 0;
    if (length == 0 || pos + length > text.size()) {
        return 0;
    }
    const auto second = static_cast<unsigned char>(text[pos + 1]);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) || (lead == 0xF0 && second < 0x90) ||
        (lead == 0xF4 && second >= 0x90)) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[pos + i]) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

}

SvgWriter::SvgWriter(double width, double height, const std::string& styleSheet)
    : m_document("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
                 Number(width) + "\" height=\"" + Number(height) + "\" viewBox=\"0 0 " + Number(width) + " " +
                 Number(height) + "\">\n<style>\n" + styleSheet + "</style>\n")
{
    Rect(0, 0, width, height, "page");
}

void SvgWriter::BeginGroup(const std::string& cssClass, const std::string& tooltip)
{
    m_document += "<g class=\"" + cssClass + "\">";
    if (!tooltip.empty()) {
        m_document += "<title>" + Escape(tooltip) + "</title>";
    }
    m_document += "\n";
}

void SvgWriter::EndGroup()
{
    m_document += "</g>\n";
}

void SvgWriter::Rect(double x, double y, double width, double height, const std::string& cssClass)
{
    m_document += "<rect class=\"" + cssClass + "\" x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" +
                  Number(width) + "\" height=\"" + Number(height) + "\"/>\n";
}

void SvgWriter::Line(double x1, double y1, double x2, double y2, const std::string& cssClass)
{
    m_document += "<line class=\"" + cssClass + "\" x1=\"" + Number(x1) + "\" y1=\"" + Number(y1) + "\" x2=\"" +
                  Number(x2) + "\" y2=\"" + Number(y2) + "\"/>\n";
}

std::string SvgWriter::TextOpening(double x, double y, const std::string& cssClass, double angle) const
{
    // Blanks are kept as they are: a label's lead ends in one.
    std::string opening = "<text xml:space=\"preserve\" class=\"" + cssClass + "\" x=\"" + Number(x) + "\" y=\"" + Number(y) + "\"";
    if (angle != 0.0) {
        opening += " transform=\"rotate(" + Number(angle) + " " + Number(x) + " " + Number(y) + ")\"";
    }
    return opening + ">";
}

void SvgWriter::Text(double x, double y, const std::string& text, const std::string& cssClass, double angle)
{
    m_document += TextOpening(x, y, cssClass, angle) + Escape(text) + "</text>\n";
}

void SvgWriter::Text(double x, double y, const std::string& lead, const std::string& leadClass,
                     const std::string& text, const std::string& cssClass, double angle)
{
    m_document += TextOpening(x, y, cssClass, angle) + "<tspan class=\"" + leadClass + "\">" + Escape(lead) +
                  "</tspan>" + Escape(text) + "</text>\n";
}

void SvgWriter::Raw(const std::string& markup)
{
    m_document += markup + "\n";
}

std::string SvgWriter::Finish()
{
    return m_document + "</svg>\n";
}

std::string SvgWriter::Number(double value)
{
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.1f", value);
    std::string number = text;
    if (number.size() > 2 && number.compare(number.size() - 2, 2, ".0") == 0) {
        number.resize(number.size() - 2);
    }
    return number == "-0" ? "0" : number;
}

std::string SvgWriter::Escape(const std::string& text)
{
    std::string escaped;
    for (std::size_t pos = 0; pos < text.size(); ++pos) {
        const auto byte = static_cast<unsigned char>(text[pos]);
        const std::size_t sequence = byte >= 0x80 ? Utf8SequenceLength(text, pos) : 0;
        if (sequence > 0) {
            escaped += text.substr(pos, sequence);
            pos += sequence - 1;
        } else if (byte == '&') {
            escaped += "&amp;";
        } else if (byte == '<') {
            escaped += "&lt;";
        } else if (byte == '>') {
            escaped += "&gt;";
        } else if (byte == '"') {
            escaped += "&quot;";
        } else if (byte == '\n' || (byte >= 0x20 && byte < 0x7F)) {
            escaped += static_cast<char>(byte);
        } else {
            // XML has no place for control characters, nor for bytes that are not UTF-8.
            escaped += ShownBytes(std::string(1, static_cast<char>(byte)));
        }
    }
    return escaped;
}

}

#include "Listing.h"

#include "Text.h"

#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace tesseralis::host {
namespace {
constexpr std::size_t c_widestCell = 60;

std::string limitsOf(Variant const & value)
{
    std::string limits;
    if (value.GetMinimum().IsDefined() && value.GetMinimum() != Variant(value.GetType()).GetMinimum()) {
        limits += "from " + toLine(value.GetMinimum());
    }
    if (value.GetMaximum().IsDefined() && value.GetMaximum() != Variant(value.GetType()).GetMaximum()) {
        limits += (limits.empty() ? "to " : " to ") + toLine(value.GetMaximum());
    }
    if (value.GetFilter().IsDefined() && !toLine(value.GetFilter()).empty()) {
        limits += "filter " + toLine(value.GetFilter());
    }
    if (value.GetType() == Variant::Type::Option) {
        limits = "of";
        for (unsigned int i = 0; i < value.GetSize(); ++i) {
            limits += (i == 0 ? " " : ", ") + toLine(value.GetElement(i));
        }
    }
    return limits;
}

std::string remarksOn(PropertyContainerIterator const & property)
{
    std::string remarks = property.HasFlags(PropertyFlag::Hidden) ? "hidden" : "";
    if (property.HasLink()) {
        PropertyContainerLink const link = property.GetLink();
        remarks += (remarks.empty() ? "linked to " : ", linked to ") +
                   onOneLine(link.GetPropertyContainer()->GetObjectName()) + "." + onOneLine(link.GetPropertyName());
    }
    if (property.HasExpression()) {
        remarks +=
            (remarks.empty() ? "computed by " : ", computed by ") + onOneLine(property.GetExpression().GetCommand());
    }
    return remarks;
}

void printRows(std::ostream & stream, std::vector<PropertyRow> const & rows)
{
    std::array<std::size_t, std::tuple_size_v<PropertyRow>> widths{};
    for (PropertyRow const & row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], std::min(widthOf(row[column]), c_widestCell));
        }
    }
    for (PropertyRow const & row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            std::string const & cell = row[column];
            line += "  " + cell + std::string(widths[column] - std::min(widths[column], widthOf(cell)), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    }
}
} // namespace

std::vector<PropertyRow> describeProperties(PropertyContainer & container)
{
    std::vector<PropertyRow> rows;
    for (PropertyContainerIterator i(container); !i.IsAtEnd(); ++i) {
        rows.push_back({onOneLine(i.GetName()), i->GetTypeName(), toLine(*i), limitsOf(*i), remarksOn(i)});
    }
    return rows;
}

void printObjects(std::ostream & stream)
{
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        stream << i->GetObjectTypeName() << " '" << onOneLine(i.GetName()) << "'\n";
        if (auto * const container = dynamic_cast<PropertyContainer *>(i.GetObject())) {
            printRows(stream, describeProperties(*container));
        }
    }
}
} // namespace tesseralis::host

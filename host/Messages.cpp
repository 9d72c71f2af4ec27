#include "host/Messages.h"

#include "base/ComponentError.h"
#include "host/MessageXml.h"

#include <utility>

namespace arvon::host {

namespace {

constexpr std::size_t indexFrom = 8; // fewer parameters are found by looking through them

Value InType(ParameterType type, const Value& value) {
    if (type == ParameterType::Integer) return Value(value.ToInteger());
    if (value.TextIfAny()) return value;
    return Value(value.ToText());
}

} // namespace

void Parameters::Add(ParameterType type, std::string_view name, const Value& value, bool) {
    items_.push_back(
        std::make_shared<Parameter>(static_cast<std::int32_t>(type), std::string(name), InType(type, value)));
}

std::shared_ptr<IParameter> Parameters::Item(std::size_t position) const {
    if (position < 1 || position > items_.size()) {
        throw base::ComponentError(base::errors::OutOfRange, "Parameters",
                                   "position " + std::to_string(position) + " is outside 1 to " +
                                       std::to_string(items_.size()));
    }
    return items_[position - 1];
}

std::shared_ptr<IParameter> Parameters::Item(std::string_view name) const {
    if (items_.size() < indexFrom) {
        for (const auto& item : items_)
            if (item->NameText() == name) return item;
        return nullptr;
    }
    for (; indexed_ < items_.size(); ++indexed_)
        index_.emplace(items_[indexed_]->NameText(), indexed_);
    const auto found = index_.find(name);
    return found == index_.end() ? nullptr : items_[found->second];
}

void Parameters::Replace(std::vector<std::shared_ptr<Parameter>> items) {
    index_.clear();
    indexed_ = 0;
    items_ = std::move(items);
}

std::string Request::Xml() const {
    return messageXml::WriteRequest(type_, mode_, parameters_.Items());
}

void Request::SetXml(std::string_view xml) {
    messageXml::Content content = messageXml::Read(messageXml::Root::Request, xml);
    type_ = std::move(content.name);
    mode_ = content.numbers[0];
    parameters_.Replace(std::move(content.parameters));
}

std::string Event::Xml() const {
    return messageXml::WriteEvent(objectType_, name_, category_, level_, parameters_.Items());
}

void Event::SetXml(std::string_view xml) {
    messageXml::Content content = messageXml::Read(messageXml::Root::Event, xml);
    objectType_ = content.numbers[0];
    category_ = content.numbers[1];
    level_ = content.numbers[2];
    name_ = std::move(content.name);
    parameters_.Replace(std::move(content.parameters));
}

} // namespace arvon::host

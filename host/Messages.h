#pragma once

#include "core/contract/Messages.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace arvon::host {

class Parameter final : public IParameter {
public:
    Parameter(std::int32_t type, std::string name, Value value)
        : type_(type), name_(std::move(name)), value_(std::move(value)) {}

    std::string Name() const override { return name_; }
    Value GetValue() const override { return value_; }

    std::int32_t Type() const noexcept { return type_; }
    const std::string& NameText() const noexcept { return name_; }
    const Value& Content() const noexcept { return value_; }

private:
    std::int32_t type_;
    std::string name_;
    Value value_;
};

/// A value is taken in its parameter's type: text or a 32-bit integer; Add throws where it has no such
/// meaning.
class Parameters final : public IParameters {
public:
    void Add(ParameterType type, std::string_view name, const Value& value, bool flag) override;
    std::size_t Count() const override { return items_.size(); }
    std::shared_ptr<IParameter> Item(std::size_t position) const override;
    std::shared_ptr<IParameter> Item(std::string_view name) const override;

    const std::vector<std::shared_ptr<Parameter>>& Items() const noexcept { return items_; }
    void Replace(std::vector<std::shared_ptr<Parameter>> items);

private:
    std::vector<std::shared_ptr<Parameter>> items_;
    mutable std::unordered_map<std::string_view, std::size_t> index_; // of the first indexed_ items
    mutable std::size_t indexed_ = 0;
};

class Request final : public IRequest {
public:
    std::string Type() const override { return type_; }
    void SetType(std::string_view type) override { type_ = type; }
    std::int32_t Mode() const override { return mode_; }
    void SetMode(std::int32_t mode) override { mode_ = mode; }
    IParameters& Parameters() override { return parameters_; }
    std::string Xml() const override;
    void SetXml(std::string_view xml) override;

private:
    std::string type_;
    std::int32_t mode_ = 0;
    host::Parameters parameters_;
};

class Event final : public IEvent {
public:
    std::int32_t ObjectType() const override { return objectType_; }
    void SetObjectType(std::int32_t type) override { objectType_ = type; }
    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override { name_ = name; }
    std::int32_t Category() const override { return category_; }
    void SetCategory(std::int32_t category) override { category_ = category; }
    std::int32_t Level() const override { return level_; }
    void SetLevel(std::int32_t level) override { level_ = level; }
    IParameters& Parameters() override { return parameters_; }
    std::string Xml() const override;
    void SetXml(std::string_view xml) override;

private:
    std::int32_t objectType_ = 0;
    std::string name_;
    std::int32_t category_ = 0;
    std::int32_t level_ = 0;
    host::Parameters parameters_;
};

class Message final : public IMessage {
public:
    std::int32_t Type() const override { return type_; }
    void SetType(std::int32_t type) override { type_ = type; }
    std::string Source() const override { return source_; }
    void SetSource(std::string_view source) override { source_ = source; }
    std::string Destination() const override { return destination_; }
    void SetDestination(std::string_view destination) override { destination_ = destination; }
    Value Body() const override { return body_; }
    void SetBody(Value body) override { body_ = std::move(body); }

private:
    std::int32_t type_ = 0;
    std::string source_;
    std::string destination_;
    Value body_;
};

} // namespace arvon::host

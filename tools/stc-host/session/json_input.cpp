#include "tools/stc-host/session/json_input.h"

#include <set>
#include <vector>

namespace stc_host {

namespace {

// Builds the document while keeping the path of the value being read.
class StrictBuilder : public nlohmann::json_sax<Json> {
  public:
    explicit StrictBuilder(Json &root) : root_(root) {}

    bool null() override { return Add(nullptr); }
    bool boolean(bool value) override { return Add(value); }
    bool number_integer(number_integer_t value) override { return Add(value); }
    bool number_unsigned(number_unsigned_t value) override { return Add(value); }
    bool number_float(number_float_t value, const string_t &) override { return Add(value); }
    bool string(string_t &value) override { return Add(value); }
    bool binary(binary_t &value) override { return Add(Json::binary(value)); }
    bool start_object(std::size_t) override { return Open(Json::object()); }
    bool start_array(std::size_t) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool key(string_t &key) override {
        Frame &frame = stack_.back();
        if (!frame.keys.insert(key).second) {
            throw SessionError(Path() + "." + key, "key \"" + key + "\" given twice");
        }
        frame.key = key;
        return true;
    }
    bool parse_error(std::size_t, const std::string &token,
                     const nlohmann::detail::exception &error) override {
        if (error.id == 406) {  // a number the double cannot hold
            throw SessionError(ValuePath(), "number " + token + " out of range");
        }
        throw SessionError("$", std::string("malformed JSON: ") + error.what());
    }

  private:
    struct Frame {
        Json *value;
        std::set<std::string> keys;
        std::string key;   // of the value being read, in an object
        size_t index = 0;  // of the value being read, in an array
    };

    // The path of the container being read.
    std::string Path() const {
        std::string path = "$";
        for (size_t i = 0; i + 1 < stack_.size(); ++i) {
            path += Step(stack_[i]);
        }
        return path;
    }
    // The path of the value being read.
    std::string ValuePath() const { return stack_.empty() ? "$" : Path() + Step(stack_.back()); }
    static std::string Step(const Frame &frame) {
        return frame.value->is_array() ? "[" + std::to_string(frame.index) + "]" : "." + frame.key;
    }

    Json *Place(Json value) {
        if (stack_.empty()) {
            root_ = std::move(value);
            return &root_;
        }
        Frame &frame = stack_.back();
        if (frame.value->is_array()) {
            frame.value->push_back(std::move(value));
            ++frame.index;
            return &frame.value->back();
        }
        return &((*frame.value)[frame.key] = std::move(value));
    }
    bool Add(Json value) {
        Place(std::move(value));
        return true;
    }
    bool Open(Json container) {
        // An array's index moves on only when the container is complete, so that errors inside
        // it still name its position.
        Json *placed = Place(std::move(container));
        if (!stack_.empty() && stack_.back().value->is_array()) {
            --stack_.back().index;
        }
        stack_.push_back({placed, {}, {}, 0});
        return true;
    }
    bool Close() {
        stack_.pop_back();
        if (!stack_.empty() && stack_.back().value->is_array()) {
            ++stack_.back().index;
        }
        return true;
    }

    Json &root_;
    std::vector<Frame> stack_;
};

}  // namespace

Json ParseStrictJson(std::istream &in) {
    Json root;
    StrictBuilder builder(root);
    Json::sax_parse(in, &builder);
    return root;
}

}  // namespace stc_host

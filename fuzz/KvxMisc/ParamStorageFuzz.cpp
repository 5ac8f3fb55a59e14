// The parameter store: any descriptors, names, values and texts, with buffers of exactly the size that is told.
#include "KvxMisc/KvxParamStorage.h"

#include <memory>
#include <string>

#include "support/GuardedBuffer.h"

using namespace kvx::fuzz;

namespace {

constexpr const char* s_names[] = {"count", "flag", "gain", "ratio", "nothing", ""};

/** A NUL-terminated text at the end of the memory that may be touched. */
class Text {
public:
    Text(Input& input, uint32_t longest) : m_buffer(input.Below(longest) + 1) {
        input.Copy(m_buffer.Data(), m_buffer.Size() - 1);
    }
    char* Chars() {
        return reinterpret_cast<char*>(m_buffer.Data());
    }

private:
    GuardedBuffer m_buffer;
};

void AddAny(Input& input, KvxParamStorage& storage, int64_t& value) {
    _KvxStParam param{};
    param.type = input.Below(8) ? 2 * input.Below(2) : input.Take<uint32_t>();
    param.flags = input.Below(8) ? 3 : input.Take<uint32_t>();
    if (input.Below(8))
        std::strcpy(param.name, input.OneOf(s_names));
    else
        std::memset(param.name, input.Take<uint8_t>(), sizeof param.name);
    param.minValue.asInt = input.Flag() ? 0 : input.Take<int64_t>();
    param.maxValue.asInt = input.Flag() ? 1 : input.Take<int64_t>();
    param.value = input.Below(8) ? &value : nullptr;
    RequireOneOf(storage.AddParam(&param), {0, 0x80000007, 0x80000008});
}

void ReadAsText(Input& input, KvxParamStorage& storage, const char* name) {
    const uint32_t given = input.Below(40);
    const GuardedBuffer text(given);
    unsigned int size = given;
    const uint32_t result = storage.GetParamAsString(name, reinterpret_cast<char*>(text.Data()), &size, nullptr);
    RequireOneOf(result, {0, 0x80000002, 0x80000006});
    Require((result == 0x80000006) == (size > given), "the needed size is told when it is larger");
    if (result != 0) return;
    const uint32_t again = storage.SetParamAsString(name, reinterpret_cast<char*>(text.Data()), false);
    RequireOneOf(again, {0, 0x80000004});  // a value that its owner put out of range
    const GuardedBuffer copy(given);
    size = given;
    storage.GetParamAsString(name, reinterpret_cast<char*>(copy.Data()), &size, nullptr);
    Require(std::strcmp(reinterpret_cast<char*>(copy.Data()), reinterpret_cast<char*>(text.Data())) == 0,
            "a text reads back");
}

void SetAny(Input& input, KvxParamStorage& storage, const char* name) {
    const bool external = input.Flag();
    Text text(input, 40);
    uint32_t result = 0;
    switch (input.Below(4)) {
        case 0:
            result = storage.SetParamInt(name, input.Take<int64_t>(), external);
            break;
        case 1:
            result = storage.SetParamFloat(name, input.Take<double>(), external);
            break;
        case 2:
            result = storage.SetParamBool(name, input.Flag(), external);
            break;
        default:
            result = storage.SetParamAsString(name, text.Chars(), external);
    }
    RequireOneOf(result, {0, 0x80000002, 0x80000003, 0x80000004, 0x80000005});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    int64_t values[8] = {};
    KvxParamStorage storage(input.Below(8));
    for (int step = 0; step < 40 && !input.IsEmpty(); ++step) {
        Text spelt(input, 12);
        const char* name = input.Below(4) ? input.OneOf(s_names) : spelt.Chars();
        switch (input.Below(4)) {
            case 0:
                AddAny(input, storage, values[input.Below(8)]);
                break;
            case 1:
                ReadAsText(input, storage, name);
                break;
            case 2:
                SetAny(input, storage, name);
                break;
            default:
                _KvxStParam param{};
                const unsigned int index = input.Flag() ? input.Below(8) : input.Take<uint32_t>();
                Require((storage.GetParamByIdx(index, &param) == 0) == (index < storage.GetParamCount()),
                        "every index below the count has a parameter");
        }
    }
    return 0;
}

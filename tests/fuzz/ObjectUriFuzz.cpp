// libFuzzer target of getObjectByUri: any text answers an object of the one model in the
// cache, an empty handle, or the refusal "Invalid uri : <text>"; never anything else.
// The first byte chooses whether the text follows the model's own URI, so that the
// fragment's path is reached as often as the parser's.

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/kernel/util/Exception.h>
#include <tav/kernel/util/ObjectLookup.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

TAV::Model const& model()
{
    static TAV::Model const m = [] {
        TAV::Model made = TAV::Model::create();
        made.getDeviant().beginTransaction();
        for (int i = 0; i < 8; ++i)
            TAV::Class::create(made);
        made.getDeviant().commitTransaction();
        return made;
    }();
    return m;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::string text(reinterpret_cast<char const*>(data) + 1, size - 1);
    if (data[0] & 1)
        text = model().getUri().toUtf8() + text;
    TAV::ClassObject found;
    try {
        found = TAV::getObjectByUri(TAV::String(text));
    } catch (TAV::Exception const& e) {
        if (std::string(e.what()).find("Invalid uri : ") != std::string::npos)
            return 0;
        std::fprintf(stderr, "unexpected refusal: %s\n", e.what());
        std::abort();
    }
    if (found.internal_intf() && !(found.getModelTAV() == model())) {
        std::fprintf(stderr, "an object of no model in the cache\n");
        std::abort();
    }
    return 0;
}

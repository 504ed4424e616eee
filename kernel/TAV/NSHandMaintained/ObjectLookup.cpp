// Finding objects again: by index, by id text and by URI, through the model cache.

#include <tav/TAV/ClassObject_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/ModelCache.h>
#include <tav/kernel/util/ObjectLookup.h>

#include <BRIX/Uri.h>

#include <charconv>
#include <string>

namespace TAV {

namespace {
constexpr char kPrefix[] = "_tav_";
constexpr std::size_t kPrefixLength = sizeof kPrefix - 1;
} // namespace

String SerializeId(ImmutableClassObject const& aObject)
{
    std::int32_t const index = aObject.getObjectIndex();
    return index == 0 ? String() : String(kPrefix + std::to_string(index));
}

Integer DeSerializeId(String const& aId)
{
    std::string const text = aId.toUtf8();
    if (text.compare(0, kPrefixLength, kPrefix) != 0)
        return 0;
    std::int32_t index = 0;
    char const* const last = text.data() + text.size();
    auto const [end, error] = std::from_chars(text.data() + kPrefixLength, last, index);
    return error == std::errc() && end == last ? index : 0;
}

ClassObject getObjectById(String const& aId, Model const& aModel)
{
    return aModel.internal_intf()->getObjectAtIndex(aModel.getDeviant(), DeSerializeId(aId));
}

ClassObject getObjectByUri(String const& aUri)
{
    std::string const text = aUri.toUtf8();
    BRIX::Uri const uri = BRIX::Uri::fromLocalFileOrUri(text);
    if (!uri.isValid())
        Asserter::MakeAlways<Exception>("Invalid uri : %s", text.c_str())
            .handle("kernel/TAV/NSHandMaintained/ObjectLookup", __LINE__, "");
    std::size_t const hash = text.rfind('#');
    std::string const modelUri = hash == std::string::npos ? text : text.substr(0, hash);
    std::string const fragment = hash == std::string::npos ? std::string() : text.substr(hash + 1);
    Model const model = ModelCache::instance().getModelFromUri(String(modelUri));
    if (!model.internal_intf() || !model.isValid())
        return ClassObject();
    if (fragment.empty())
        return ClassObject(model);
    return model.internal_intf()->getObjectAtIndex(model.getDeviant(), DeSerializeId(String(fragment)));
}

} // namespace TAV

#include <BRIX/ModuleObjectDeleter.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <map>
#include <string>
#include <string_view>

namespace TAV::CooperativeVisitor {

namespace {

// One leading '*' is skipped so that the same type named by two libraries,
// one of them with the marker, gets one tag.
std::string_view tagName(std::type_info const& info)
{
    char const* name = info.name();
    return std::string_view(*name == '*' ? name + 1 : name);
}

struct Domain {
    unsigned lastTag = 0;
    std::map<std::string, unsigned, std::less<>> classes;
};

std::map<std::string, Domain, std::less<>>& domains()
{
    static std::map<std::string, Domain, std::less<>> sDomains;
    return sDomains;
}

std::map<std::string, internal::ClassInfo, std::less<>>& tagsByName()
{
    static std::map<std::string, internal::ClassInfo, std::less<>> sByName;
    return sByName;
}

} // namespace

namespace internal {

unsigned GetTag(std::type_info const& cls, std::type_info const& domain)
{
    auto& all = domains();
    std::string_view const domainName = tagName(domain);
    auto d = all.find(domainName);
    if (d == all.end())
        d = all.emplace(std::string(domainName), Domain{}).first;
    std::string_view const className = tagName(cls);
    auto c = d->second.classes.find(className);
    if (c == d->second.classes.end())
        c = d->second.classes.emplace(std::string(className), ++d->second.lastTag).first;
    return c->second;
}

ClassInfo GetTagFromName(char const* name)
{
    auto const& byName = tagsByName();
    auto const it = byName.find(std::string_view(name));
    return it == byName.end() ? ClassInfo{} : it->second;
}

void BindTagToName(char const* name, ClassInfo const& info)
{
    tagsByName()[name] = info;
}

ClassMetaInfo::ClassMetaInfo(std::initializer_list<std::pair<ClassInfo, CastThunk>> entries) : fTables(new Tables)
{
    BRIX::ModuleObjectDeleter::registerForCleanup_toBeUsedOnlyByTAVCoopVisitor(
        [](void* p) { delete static_cast<Tables*>(p); }, fTables);
    Tables& t = *fTables;
    t.infos.growTo(entries.size());
    t.thunks.growTo(entries.size());
    unsigned slot = 0;
    for (auto const& [info, thunk] : entries) {
        t.infos[slot] = info;
        t.thunks[slot] = thunk;
        ++slot;
        t.index.growTo(info.domain + 1);
        t.index[info.domain].growTo(info.cls + 1);
        if (t.index[info.domain][info.cls] == 0)
            t.index[info.domain][info.cls] = slot;
    }
}

VisitEntry ClassMetaInfo::visit(void const* self, DispatchTable const& table) const
{
    Tables const& t = *fTables;
    if (t.infos.size() == 0)
        return {};
    if (void* fn = table.lookup(t.infos[0]))
        return {const_cast<void*>(self), fn};
    // The nearest bound base wins: bases are listed nearest first.
    for (std::size_t i = 1; i < t.infos.size(); ++i) {
        void* fn = table.lookup(t.infos[i]);
        if (fn && t.thunks[i])
            return {t.thunks[i](const_cast<void*>(self)), fn};
    }
    return {};
}

} // namespace internal

DispatchTable::DispatchTable() : fTable(new LightVector<LightVector<void*>>)
{
    BRIX::ModuleObjectDeleter::registerForCleanup_toBeUsedOnlyByTAVCoopVisitor(
        [](void* p) { delete static_cast<LightVector<LightVector<void*>>*>(p); }, fTable);
}

void DispatchTable::bind(internal::ClassInfo const& info, void* fn)
{
    fTable->growTo(info.domain + 1);
    (*fTable)[info.domain].growTo(info.cls + 1);
    (*fTable)[info.domain][info.cls] = fn;
}

VisitorBase::~VisitorBase() = default;

VisitEntry VisitorBase::find(ReferenceCountingIntf const& object) const
{
    return object.getVisitMethod(*fTable);
}

} // namespace TAV::CooperativeVisitor

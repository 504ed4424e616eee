#include <tav/kernel/util/UserMessage.h>

#include <BRIX/ModuleObjectDeleter.h>
#include <hull/console.h>
#include <hull/i18n.h>

#include <algorithm>
#include <ostream>

namespace UserMessage {

MessageStream::~MessageStream() = default;

void DefaultMessageStream::message(const Message& record)
{
    const char* prefix = nullptr;
    switch (record.severity) {
    case Error: prefix = "[UM:Error] : "; break;
    case Warning: prefix = "[UM:Warning] : "; break;
    case Info: prefix = "[UM:Info] : "; break;
    default: return;
    }
    std::ostream& out = record.severity == Error ? hull::console::err() : hull::console::out();
    out << prefix << record.product << " : " << record.id << " : " << hull::i18n::toUtf8(record.text) << '\n';
}

} // namespace UserMessage

namespace {

UserMessage::DefaultMessageStream gDefaultStream;
UserMessage::MessageStream* gStream = &gDefaultStream;
std::string* gProduct = nullptr;

const std::string& product()
{
    static const std::string kDefault = "QRD";
    return gProduct ? *gProduct : kDefault;
}

void push(int severity, const std::string& source, const std::string& id, const std::u16string& text)
{
    if (!gStream)
        return;
    gStream->message({severity, tavmsg::cleanId(id), source, text, product()});
}

void issue(int severity, const UserMessage::Source& source, const BRIX::BaseMsgID& message)
{
    if (!gStream)
        return;
    // Only the exact legacy marker is folded; a catalogue that merely
    // contains it is someone else's name.
    const std::string catalogue =
        message.catalogue == "CALYX:legacy_two_part" ? std::string("CALYX") : message.catalogue;
    push(severity, source.name(), catalogue + ":" + message.key, hull::i18n::messageText(message));
}

} // namespace

void tavError(const UserMessage::Source& source, const BRIX::BaseMsgID& message)
{
    issue(UserMessage::Error, source, message);
}

void tavWarning(const UserMessage::Source& source, const BRIX::BaseMsgID& message)
{
    issue(UserMessage::Warning, source, message);
}

void tavInfo(const UserMessage::Source& source, const BRIX::BaseMsgID& message)
{
    issue(UserMessage::Info, source, message);
}

void tavError(const BRIX::BaseMsgID& message)
{
    tavError(UserMessage::Source(), message);
}

void tavWarning(const BRIX::BaseMsgID& message)
{
    tavWarning(UserMessage::Source(), message);
}

void tavInfo(const BRIX::BaseMsgID& message)
{
    tavInfo(UserMessage::Source(), message);
}

void tavSetMessageStream(UserMessage::MessageStream* stream)
{
    gStream = stream ? stream : &gDefaultStream;
}

UserMessage::MessageStream* tavGetMessageStream()
{
    return gStream;
}

void tavSetProduct(const std::string& name)
{
    if (!gProduct) {
        gProduct = new std::string;
        BRIX::ModuleObjectDeleter::registerForCleanup(+[](void* p) {
            delete static_cast<std::string*>(p);
            gProduct = nullptr;
        }, gProduct);
    }
    *gProduct = name;
}

namespace tavmsg {

void pushError(const std::string& source, const std::string& id, const std::u16string& text)
{
    push(UserMessage::Error, source, id, text);
}

void pushWarning(const std::string& source, const std::string& id, const std::u16string& text)
{
    push(UserMessage::Warning, source, id, text);
}

void pushInfo(const std::string& source, const std::string& id, const std::u16string& text)
{
    push(UserMessage::Info, source, id, text);
}

std::u16string getMessageStringFromId(const std::string& id)
{
    const auto colon = id.rfind(':');
    if (colon == std::string::npos)
        throw hull::i18n::CatalogueError("Message id \"" + id + "\" names no catalogue");
    return hull::i18n::catalogueText(id.substr(0, colon), id.substr(colon + 1));
}

std::string cleanId(const std::string& id)
{
    static const std::string kOwnCatalogue = "tav:messages:";
    std::string cleaned = id.starts_with(kOwnCatalogue) ? id.substr(kOwnCatalogue.size()) : id;
    const auto first = cleaned.find_first_of(":_");
    if (first != std::string::npos) {
        cleaned[first] = ' ';
        std::replace(cleaned.begin() + static_cast<std::ptrdiff_t>(first), cleaned.end(), ':', ' ');
    }
    return cleaned;
}

} // namespace tavmsg

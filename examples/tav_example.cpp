// What the foundation offers today: failures with traces, catalogued user
// messages, diagnostic logging to the console and to a file, and values that
// travel as objects.
#include <tav/TAV/Integer.h>
#include <tav/TAV/String.h>
#include <tav/kernel/util/TAVCast.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>
#include <tav/logger/ConsoleLogHandler.h>
#include <tav/logger/FileLogHandler.h>
#include <tav/logger/Logger.h>

#include <hull/filesystem.h>
#include <hull/i18n.h>

#include <fstream>
#include <iostream>

namespace {

void resize(int size)
{
    TAV::Asserter::Make<TAV::Exception>(size >= 0, "negative size %d", size).handle("examples/tav_example", __LINE__, "");
}

} // namespace

int main()
{
    std::cout << "TAV installed at " << hull::filesystem::installPath() << "\n\n";

    std::cout << "-- A failed check raises TAV::Exception with its trace\n";
    try {
        resize(-1);
    } catch (const TAV::Exception& e) {
        std::cout << e.what() << "\n(id " << e.GetID() << ")\n" << e.GetStackTrace() << '\n';
    }

    std::cout << "-- A catalogued user message, on the default stream\n";
    tavWarning(UserMessage::Source("example"),
               tav::messages::TAV_Serializer_XmiReader_ReadError("model.xmi", 1, 1, u"the file is empty"));
    std::cout << '\n';

    std::cout << "-- Log lines, to the console and to the process's text log\n";
    TAV::ConsoleLogHandler console;
    TAV::FileLogHandler file;
    TAV::Logger::instance().addHandler(&console);
    TAV::Logger::instance().addHandler(&file);
    tavLogInfo("example started with %d handlers", 2);
    tavLogDebug("not shown: below the Info threshold");
    TAV::Logger::instance().removeHandler(&console);
    TAV::Logger::instance().removeHandler(&file);
    std::cout << "The text log is " << file.getPath() << ", holding:\n"
              << std::ifstream(file.getPath()).rdbuf();

    std::cout << "\n-- Values travel as objects and convert to and from text\n";
    TAV::Object const carried = TAV::Integer::fromString("0x10");
    std::cout << "read 0x10, carried as " << TAV::ValueObject(carried).toString().c_str() << ", back as "
              << TAV::TAVCast<TAV::Integer>(carried).value() << '\n';
    BRIX::ErrorHolder errors;
    TAV::Integer::getTypeInfo().convertFromString("twelve", errors);
    std::cout << "bad text is reported, not thrown: " << errors.getErrorText() << '\n';
}

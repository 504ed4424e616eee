// A program outside the project, built against an installed TAV.
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/Messages.h>
#include <tav/kernel/util/UserMessage.h>
#include <tav/logger/ConsoleLogHandler.h>
#include <tav/logger/Logger.h>

#include <tav/TAV/Property_h.h>

#include <hull/filesystem.h>

#include <iostream>

int main()
{
    try {
        TAV::Asserter::Make<TAV::Exception>(false, "%d items", 3).handle("consumer", 1, "");
    } catch (const TAV::Exception& e) {
        std::cout << "caught: " << e.what() << '\n';
    }
    TAV::ConsoleLogHandler console;
    TAV::Logger::instance().addHandler(&console);
    tavLogInfo("logged %s", "here");
    TAV::Logger::instance().removeHandler(&console);
    tavInfo(tav::messages::TAV_Serializer_XmiReader_EmptyFileList());
    TAV::ImmutableProperty none;
    try {
        (void)none.getDefault();
    } catch (const TAV::Exception& e) {
        std::cout << "handle: " << (none.isValid() ? "valid" : "empty") << ", " << e.what() << '\n';
    }
    std::cout << "install path: " << hull::filesystem::installPath() << '\n';
}

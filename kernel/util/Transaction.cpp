#include <tav/TAV/NSInterface/ModelIntf.h>
#include <tav/kernel/util/Asserter.h>
#include <tav/kernel/util/Transaction.h>

#include <utility>

namespace TAV {

namespace {

constexpr char kSource[] = "kernel/deviant/TransactionUtility";

} // namespace

// A null model is named first in the transaction's own words; should that
// check let it through, the handle's own refusal follows.
void Transaction::take(Model const& aModel, char const* aOperation, int aLine)
{
    Asserter::Make<Exception>(aModel.internal_intf() != nullptr, "Attempt to %s transaction on NULL model!", aOperation)
        .handle(kSource, aLine, "");
    if (!aModel.internal_intf())
        nullReference(kSource, aLine);
}

Transaction::Transaction(Model const& aModel)
{
    begin(aModel);
}

Transaction::Transaction(Model const& aModel, std::string const& aName)
{
    begin(aModel, aName);
}

Transaction::Transaction(Transaction&& aOther) : Model(static_cast<Model const&>(aOther)), fEnded(aOther.fEnded) {}

Transaction& Transaction::operator=(Transaction&& aOther)
{
    Model::operator=(static_cast<Model const&>(aOther));
    fEnded = aOther.fEnded;
    return *this;
}

Transaction::~Transaction()
{
    try {
        end();
    } catch (Exception const&) {
    }
}

void Transaction::begin(Model const& aModel)
{
    Model::operator=(aModel);
    take(*this, "begin", __LINE__);
    internal_intf()->beginTransaction(getDeviant());
    fEnded = false;
}

void Transaction::begin(Model const& aModel, std::string const& aName)
{
    Model::operator=(aModel);
    take(*this, "begin", __LINE__);
    internal_intf()->beginTransaction(getDeviant(), String(aName));
    fEnded = false;
}

bool Transaction::commit()
{
    fEnded = true;
    take(*this, "commit", __LINE__);
    return internal_intf()->commitTransaction(getDeviant());
}

void Transaction::cancel()
{
    take(*this, "cancel", __LINE__);
    internal_intf()->cancelTransaction(getDeviant());
    fEnded = true;
}

void Transaction::end()
{
    if (!fEnded)
        cancel();
    fEnded = true;
    Model::operator=(Model());
}

void Transaction::reset(Model const& aModel)
{
    end();
    begin(aModel);
}

void Transaction::reset(Model const& aModel, std::string const& aName)
{
    end();
    begin(aModel, aName);
}

MultiModelTransaction::~MultiModelTransaction()
{
    if (fTransactions.empty())
        return;
    try {
        cancel();
    } catch (...) {
    }
}

void MultiModelTransaction::addModel(Model const& aModel)
{
    addModel(aModel, std::string());
}

void MultiModelTransaction::addModel(Model const& aModel, std::string const& aName)
{
    fModels.push_back(aModel);
    // The local one still counts as open after the move: its end cancels the
    // model's transaction, while the copy kept here does not know it.
    Transaction local(aModel, aName);
    fTransactions.push_back(std::move(local));
}

bool MultiModelTransaction::commit()
{
    fDone = true;
    bool all = true;
    for (Transaction& t : fTransactions)
        all = t.commit() && all;
    clear();
    return all;
}

void MultiModelTransaction::cancel()
{
    for (Transaction& t : fTransactions)
        t.cancel();
    clear();
}

void MultiModelTransaction::clear()
{
    fModels.clear();
    fTransactions.clear();
}

} // namespace TAV

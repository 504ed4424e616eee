#pragma once

// Scoped transactions on models: whatever was not explicitly ended is
// cancelled when the helper goes.
//
//   TAV::Transaction t(model, "rename");
//   p.setName("speed");
//   t.commit();                    // without it, the change is cancelled here

#include <tav/TAV/Model_h.h>

#include <string>
#include <deque>
#include <vector>

namespace TAV {

class TAV_EXPORT Transaction : public Model {
public:
    Transaction() = default;
    explicit Transaction(Model const& aModel);
    Transaction(Model const& aModel, std::string const& aName);
    // Both copy the handle and the flag and leave the source as it was: a
    // moved-from transaction that is still open cancels when it goes.
    Transaction(Transaction&& aOther);
    Transaction& operator=(Transaction&& aOther);
    Transaction(Transaction const&) = delete;
    Transaction& operator=(Transaction const&) = delete;
    // Ends; a TAV::Exception from the cancel is swallowed.
    ~Transaction();

    void begin(Model const& aModel);
    void begin(Model const& aModel, std::string const& aName);
    // Ended either way; false when a validator refused.
    bool commit();
    void cancel();
    // Cancels unless ended, and lets the model go.
    void end();
    void reset() { end(); }
    void reset(Model const& aModel);
    void reset(Model const& aModel, std::string const& aName);

    bool isEnded() const { return fEnded; }

private:
    void take(Model const& aModel, char const* aOperation, int aLine);

    bool fEnded = true;
};

// One transaction on each of several models, committed or cancelled model by
// model: a model's commit stands when a later one is refused.
class TAV_EXPORT MultiModelTransaction {
public:
    MultiModelTransaction() = default;
    MultiModelTransaction(MultiModelTransaction const&) = delete;
    MultiModelTransaction& operator=(MultiModelTransaction const&) = delete;
    // Cancels what is left; nothing escapes.
    ~MultiModelTransaction();

    void addModel(Model const& aModel);
    void addModel(Model const& aModel, std::string const& aName);
    // True only if every model committed; each is tried.
    bool commit();
    // The first failing cancel goes on to the caller.
    void cancel();

private:
    void clear();

    std::vector<Model> fModels;
    // Never moved once in: a moved-from open transaction would cancel.
    std::deque<Transaction> fTransactions;
    bool fDone = false;
};

} // namespace TAV

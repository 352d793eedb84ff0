#pragma once
#include "com/late_bound.h"
#include "ports/database.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kova::test {

/// How a call of the stand-in fails.
enum class Refusal {
    Explained,   ///< with a description that is asked for, and an entry in the connection's `Errors`
    ErrorObject, ///< with a description in the thread's error object
    Bare,        ///< without one
};
constexpr const char* RefusalText = "refused by the stand-in";

/// A call of a member: its arguments, first to last, and what it gives.
struct AdoCall {
    std::vector<VARIANT*> arguments;
    VARIANT* result;
    template <class Content>
    void give(Content&& content) const {
        com::Value value(std::forward<Content>(content));
        if (result != nullptr)
            *result = std::exchange(*value, VARIANT{});
    }
};
using AdoMember = std::function<void(AdoCall&)>;
using AdoMembers = std::map<std::wstring, AdoMember>;
using AdoObject = com::Pointer<IDispatch>;

/// Stands in for ADO in this process for as long as it lives: its classes, answering from a database. It must
/// outlive all their objects.
class AdoStandIn {
  public:
    explicit AdoStandIn(std::shared_ptr<DatabaseConnection> database);
    AdoStandIn(const AdoStandIn&) = delete;
    AdoStandIn& operator=(const AdoStandIn&) = delete;
    ~AdoStandIn();

    AdoObject connection();
    AdoObject object(AdoMembers members);
    /// Refuses the call of that number, counted from now on; making an object is a call, too.
    void refuseCall(int number, Refusal how);

    std::int32_t connectionState = 1;
    HRESULT opening = S_OK; ///< what opening a connection comes to
    int calls = 0;          ///< since refuseCall
    int objects = 0;        ///< that live
    int openRecords = 0;
    int rowCounts = 0;                      ///< results without rows that come before the rows
    bool noRows = false;                    ///< no rows follow those
    std::vector<com::Value>* row = nullptr; ///< when set, the cells of the next row
    std::vector<std::string> log; ///< calls of connections, and how record sets and parameters are made

  private:
    class Object;
    class Factory;
    struct Records;
    bool refuses() { return ++calls == refused_; }
    HRESULT refuse(EXCEPINFO* details);
    void offer(const wchar_t* className, std::function<AdoObject()> make);
    AdoObject collection(const std::vector<AdoMembers>& items);
    AdoObject records(const std::shared_ptr<Records>& records);
    AdoObject command();
    void note(const AdoCall& call, std::string line);
    const com::Apartment apartment_;
    const std::shared_ptr<DatabaseConnection> database_;
    std::vector<DWORD> registrations_;
    std::vector<AdoMembers> errors_; ///< of all connections
    Query commanded_;                ///< by the last command
    int refused_ = 0;
    Refusal refusal_{};
};

} // namespace kova::test

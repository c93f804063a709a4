// The application object that a module shows to the host: one virtual operation for each host message.
#pragma once

#include "host/surface/module.h"

#include <string_view>
#include <vector>

namespace fenmark::module {

struct Command {
    std::string_view group;
    std::string_view name; // global and local
    std::uint32_t flags = 0;
    mirdane::CommandHandler handler = nullptr;
};

struct Callable {
    std::string_view name;
    int code = 0;
    mirdane::CallableFunction function = nullptr;
};

// The operations in the order of the messages 1 to 15, and then that of message 0. All return 0 unless overridden.
class MdRxDbmApp {
  public:
    virtual ~MdRxDbmApp() = default;

    virtual int initApp(void* package);
    virtual int unloadApp(void* package);
    virtual int loadDrawing(void* package);
    virtual int unloadDrawing(void* package);
    virtual int invokeFunction(void* package);
    virtual int message6(void* package);
    virtual int message7(void* package);
    virtual int message8(void* package);
    virtual int message9(void* package);
    virtual int message10(void* package);
    virtual int message11(void* package);
    virtual int message12(void* package);
    virtual int message13(void* package);
    virtual int message14(void* package);
    virtual int message15(void* package);
    virtual int message0(void* package);

  protected:
    virtual const std::vector<mirdane::MdRxClass*>& classes() const; // none here
    bool unlocked_ = true;                                           // the host may unload the module
    bool multiDocument_ = true;                                      // the module copes with several documents
};

// Adds the tables of commands and callable functions.
class MdRxMdmApp : public MdRxDbmApp {
  public:
    int initApp(void* package) override;
    int unloadApp(void* package) override;
    int loadDrawing(void* package) override;
    int unloadDrawing(void* package) override;
    int invokeFunction(void* package) override;

  protected:
    virtual const std::vector<Command>& commands() const = 0;
    virtual const std::vector<Callable>& callables() const = 0;
    virtual void* resourceInstance() const = 0;

  private:
    // Commands that the host did not take, since another module has them, which may be another copy of this one. They
    // are not ours to remove.
    std::vector<std::string_view> refused_;
};

// Passes a message to its operation; 0 for a number outside 0 to 15.
int dispatchMessage(MdRxDbmApp& app, int message, void* package);

} // namespace fenmark::module

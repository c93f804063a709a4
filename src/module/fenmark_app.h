// The module's application object, with its command table.
#pragma once

#include "module/mdrx_app.h"

namespace fenmark::module {

inline constexpr std::string_view kCommandGroup = "QMRFenmark";

// The command "Fenmark".
void runFenmark();
// "Fenmarks" and "Fenmark2" stay registered so that typing them does nothing; nothing is to be added to them.
void runNothing();

class CFenmarkApp : public MdRxMdmApp {
  public:
    int initApp(void* package) override;

  protected:
    const std::vector<Command>& commands() const override;
    const std::vector<Callable>& callables() const override; // none
    void* resourceInstance() const override;
};

// Data of each document. The import uses none of it.
class CDocData {};

} // namespace fenmark::module

// The hardware repository: typed queries over an XML database of components, hardware
// functions and the platform they sit on. See docs/repository.md and, for the file,
// "Hardware repository" in docs/formats.md.
//
// Opening a repository and asking it:
//
//   boost::shared_ptr<qd::QDSRepo> repo(new qd::QDSRepo("qd_ip_db.xml", 0));
//   int n = repo->getNumQdComponents();                  // count(...) over qd:component
//   std::string first = repo->getIthQdComponent(0);      // indices count from 0
//   bool isPlatform = repo->isQdPlatformComp(first);     // XPath, checked against the cache
//
// Every answer comes from XPath over the document. Where a query also has a cached answer (a
// Component built from the same file), the two are compared, and a disagreement ends the
// process (QDREPO_VERIFY): the repository cannot be trusted then. Queries never throw; what they
// cannot answer they answer with -1, -1.0, false, "" or an empty list.
//
// The query families follow in the order of their source files: the core (QDSRepo.cpp),
// components and ports (QDSRepoComponents.cpp), hardware functions (QDSRepoHwFcns.cpp).
#ifndef HOST_QD_QDREPO_QDSREPO_H_
#define HOST_QD_QDREPO_QDSREPO_H_

#include <boost/shared_ptr.hpp>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/qd/qdrepo/Component.h"
#include "host/qd/qdrepo/QDXPathDoc.h"
#include "service/Export.h"
#include "service/Log.h"

namespace qd {

// Ends the process when the XPath answer `xpath` and the cached answer `cached` of `query`
// differ, after the line "ERROR: [Morvane 83-9999] Equivalency violation found for <query>
// <xpath>!=<cached>[: <extra>]". Booleans print as 0 and 1.
template <class T>
void QDREPO_VERIFY(std::string const& query, T const& xpath, T const& cached,
                   std::string const& extra) {
  if (xpath == cached) return;
  {
    Log line(logERROR, 9999);
    line << "Equivalency violation found for " << query << " " << xpath << "!=" << cached;
    if (!extra.empty()) line << ": " << extra;
  }
  std::exit(-1);
}

class QV_EXPORT QDSRepo {
 public:
  // Reads `fileName` twice: with libxml2 for XPath, and with Boost's property tree parser for
  // the cache of components. Bit 0 of `flags` runs the interactive query loop on the document
  // first. Throws std::runtime_error (Log ERROR 1019) when the file cannot be opened or is not
  // well-formed XML, and boost::property_tree::ptree_error when it has no qd:repository root.
  // A component that cannot be cached is skipped (Log INTERNAL 9999) and answers from XPath
  // alone. The first repository of a process fills the vocabularies' tables.
  QDSRepo(std::string const& fileName, unsigned int flags);

  // ---- Core ----------------------------------------------------------------------------------
  // The document's file name, as given.
  std::string getFileName() const;

  int intQuery(std::string const& expression, std::string const& caller);
  long long longLongQuery(std::string const& expression, std::string const& caller);
  double floatQuery(std::string const& expression, std::string const& caller);
  bool booleanQuery(std::string const& expression, std::string const& caller);
  std::string stringQuery(std::string const& expression, std::string const& caller);
  std::vector<std::string> stringListQuery(std::string const& expression,
                                           std::string const& caller);
  bool queryDocInteractive();

  int getNumQdComponents();
  std::string getIthQdComponent(int i);

  // Checks every hardware function, from the last to the first, without stopping at a
  // failure; true when all pass (and when there are none).
  bool checkDatabase();
  // False, with a Log line, for a name that is no function (INFO 1000) or a function whose
  // component is neither an accelerator nor the platform (ERROR 1020, listing every function).
  bool checkQdHwFcn(std::string const& name);

  // ---- Components ----------------------------------------------------------------------------
  // False for an empty name (Log INTERNAL 1014 " NULL component type reference ").
  bool isQdComp(std::string const& component);
  bool isQdAcceleratorComp(std::string const& component);
  bool isQdDatamoverComp(std::string const& component);
  bool isQdMonitorComp(std::string const& component);
  bool isQdInterconnectComp(std::string const& component);
  bool isQdSmartConnectComp(std::string const& component);
  // Checked against the cached platform component.
  bool isQdPlatformComp(std::string const& component);
  std::string getQdCompType(std::string const& component);

  // ---- Hardware functions --------------------------------------------------------------------
  bool isQdHwFcn(std::string const& function);
  int getNumQdHwFcns();
  std::string getIthQdHwFcn(int i);
  std::string getQdHwFcnQdComponentRef(std::string const& function);

  // ---- State ---------------------------------------------------------------------------------
  // Constant after construction. The component of type "platform" (the last that parsed).
  std::shared_ptr<Component> platformComponent;
  // Every component that parsed, by name; the first of a name stays.
  std::map<std::string, std::shared_ptr<Component>> components;
  boost::shared_ptr<QDXPathDoc> doc;
  unsigned int flags = 0;
};

// Kind test over the document: whether `component` has qd:type `type`.
bool isQdCompType(std::string const& component, std::string const& type,
                  boost::shared_ptr<QDXPathDoc> const& doc);
// An attribute of a hardware function; "" with Log INTERNAL 1003 when there is no such function.
std::string getQdHwFcnStrAttr(QDSRepo& repo, std::string const& function,
                              std::string const& attribute, std::string const& caller);

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDSREPO_H_

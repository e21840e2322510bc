#include "shell/ModuleClasses.h"

#include "shell/ExchangeService.h"
#include "shell/ModuleFactory.h"
#include "shell/ModuleGlobals.h"

#include <algorithm>
#include <new>
#include <string_view>

namespace tessera {

namespace {

// The text, cut at the field's width; what is left of the field stays zero.
template <std::size_t Size>
void fill(char (&field)[Size], std::string_view text) {
    std::copy_n(text.begin(), std::min(text.size(), Size), field);
}

FactoryInfo makeFactoryInfo() {
    FactoryInfo info;
    fill(info.vendor, "Marlgrove Audio Works GmbH");
    fill(info.url, "https://www.marlgrove.example");
    fill(info.email, "mailto:support@marlgrove.example");
    info.flags = FactoryInfo::kHasWideRecords;
    return info;
}

// The cardinality of 1 and the texts that are left empty are meant: the factory's vendor speaks for the class.
ClassInfoEx makeServiceInfo() {
    ClassInfoEx info;
    info.classId = kExchangeServiceClass;
    info.cardinality = 1;
    fill(info.category, "Service");
    fill(info.name, "Tessera Exchange");
    fill(info.version, "1.5.10.6");
    return info;
}

IBaseUnknown* createService(std::uintptr_t) {
    auto* service = new (std::nothrow) ExchangeService;
    return service == nullptr ? nullptr : static_cast<IPlugin*>(service);
}

} // namespace

IModuleFactory* getModuleFactory() {
    if (ModuleFactory* factory = moduleGlobals().factory) {
        factory->addRef();
        return factory;
    }
    static const FactoryInfo factoryInfo = makeFactoryInfo();
    auto* factory = new (std::nothrow) ModuleFactory(factoryInfo);
    moduleGlobals().factory = factory;
    if (factory != nullptr) {
        static const ClassInfoEx serviceInfo = makeServiceInfo();
        factory->addClass(&serviceInfo, createService, 0);
    }
    return factory;
}

} // namespace tessera

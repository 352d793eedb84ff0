// A host of the installed component: shows the dialog in another language, and sees failures cross over.
#include <component/type_description.h>
#include <kova_drawer_man.h>

#include <iostream>

int main() {
    const auto component = kova::createComponent();
    component->InizializzaByConnString("Data Source=there-is-no-such-file.db");
    component->Show(0);
    kova::processEvents();
    kova::setLanguage(1031, "Deutsch");
    component->DiscardForm();
    try {
        (void)component->get("Version");
    } catch (const kova::Error&) {
        kova::shutDown();
        for (const auto& member : kova::type_description::members())
            std::cout << member.name << ' ';
        std::cout << "the installed component works" << std::endl;
        return 0;
    }
    return 1;
}

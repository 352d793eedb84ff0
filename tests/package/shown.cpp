// A host of the installed component: shows the dialog, and sees a failure cross over.
#include <component/type_description.h>
#include <kova_drawer_man.h>

#include <iostream>

int main() {
    const auto component = kova::createComponent();
    component->Show(0);
    kova::processEvents();
    try {
        (void)component->get("Version");
    } catch (const kova::Error&) {
        for (const auto& member : kova::type_description::members())
            std::cout << member.name << ' ';
        std::cout << "the installed component works" << std::endl;
        return 0;
    }
    return 1;
}

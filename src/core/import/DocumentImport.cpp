#include "DocumentImport.h"

#include "../model/ProjectCollection.h"
#include "../stores/CustomerStorage.h"
#include "../stores/TagStorage.h"

#include <QCoreApplication>

int DocumentImport::customerNamed(CustomerStorage &customers, const QString &name) {
    if (const auto known = customers.customerWithName(name))
        return known->customerID();
    auto customer = std::make_shared<Customer>();
    customer->setName(name);
    return customers.addCustomer(customer);
}

ImportPlan DocumentImport::apply(const ImportResult &result, ProjectCollection &collection,
                                 CustomerStorage *customers, TagStorage *tags) {
    const QString name = QCoreApplication::translate("DocumentImport", "Import");
    QUndoStack *undo = collection.undoStack();
    undo->beginMacro(name);
    ImportPlan plan =
        ImportPlan::make(result, collection.projectArray(),
                         customers ? ImportPlan::CustomerIds([customers](const QString &customer) {
                             return customerNamed(*customers, customer);
                         })
                                   : ImportPlan::CustomerIds());
    collection.addProjectsAndEntries(name, plan.newProjects, plan.additions);
    undo->endMacro();
    if (tags && !plan.tags.isEmpty())
        tags->addTagsFromArray(plan.tags);
    return plan;
}

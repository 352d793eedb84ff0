/* A till in C: connects a database, shows the dialog, stores what is confirmed and prints what else is asked for.
 *
 *     till DATABASE [MOVEMENTS]
 *
 * DATABASE is a file of the embedded database or a connection text; movements are appended to the file MOVEMENTS. */
#include <kova_drawer_man_c.h>

#include <stdio.h>
#include <string.h>

struct till {
    const char* movements;
};

static int32_t save(void* user, int32_t* payment, double* amount, kova_text currency, kova_text note, int16_t* drawer,
                    int32_t* activity, int32_t* incoming) {
    const struct till* till = user;
    const char* text = "";
    FILE* file = fopen(till->movements, "a");
    if (file == NULL) { /* the cashier reads this and keeps what was entered */
        kova_fail("The movements cannot be written");
        return 513;
    }
    kova_text_get(currency, &text);
    fprintf(file, "%s%.2f %s, payment %d, drawer %d, activity %d", *incoming ? "+" : "-", *amount, text, (int)*payment,
            (int)*drawer, (int)*activity);
    kova_text_get(note, &text);
    fprintf(file, ", %s\n", text);
    if (fclose(file) != 0) {
        kova_fail("The movements cannot be written to the end");
        return 513;
    }
    return 0;
}

static int32_t print(void* user, kova_text day) {
    const char* text = "";
    int32_t year, month, date;
    (void)user;
    kova_text_get(day, &text);
    if (kova_parse_date(text, &year, &month, &date) != KOVA_OK)
        return 0; /* what the cashier left is no day: nothing to print */
    printf("movements of %04d-%02d-%02d\n", (int)year, (int)month, (int)date);
    return 0;
}

static int32_t open_drawer(void* user) {
    (void)user;
    puts("the drawer opens");
    return 0;
}

/* Says what failed, and whether something did. */
static int failed(const char* what, kova_status status) {
    if (status != KOVA_OK)
        fprintf(stderr, "%s: %s (%d)\n", what, kova_last_error(), (int)kova_last_error_number());
    return status != KOVA_OK;
}

int main(int count, char** arguments) {
    struct till till = {count > 2 ? arguments[2] : "movements.txt"};
    kova_handlers handlers = {.size = sizeof handlers,
                              .user = &till,
                              .SalvaPagamento = save,
                              .Stampa = print,
                              .Anteprima = print,
                              .ApriCassetto = open_drawer};
    kova_component drawer;
    kova_sink sink;
    kova_database database;
    char text[1024];
    if (count < 2 || failed("create", kova_create(&drawer)))
        return 1;
    /* InizializzaByConnString would keep a failure to itself; a database of our own tells it. */
    snprintf(text, sizeof text, strchr(arguments[1], '=') != NULL ? "%s" : "Data Source=%s", arguments[1]);
    if (failed("connect", kova_connect(drawer, &handlers, &sink)) ||
        failed("open", kova_database_open(text, &database)) ||
        failed("Inizializza", kova_Inizializza(drawer, database)))
        return 1;
    kova_database_release(database); /* the component keeps it */
    failed("idCassa", kova_set_idCassa(drawer, 1));
    failed("Show", kova_Show(drawer, 1, NULL)); /* returns when the dialog has closed */
    kova_disconnect(sink);
    return failed("release", kova_release(drawer));
}

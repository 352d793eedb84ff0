/* A host that was built against version 4.10 and is kept as it was: earlier_host_4.10, for x86-64, runs with every later
 * library of version 4. How it was built:
 *
 *     gcc -std=c99 -O1 -s earlier_host.c -o earlier_host_4.10 -lKova_Drawer_Man
 */
#include <kova_drawer_man_c.h>

#include <stdio.h>

static int32_t save(void* user, int32_t* payment, double* amount, kova_text currency, kova_text note, int16_t* cassette,
                    int32_t* activity, int32_t* incoming) {
    const char* text = "";
    ++*(int*)user;
    kova_text_get(currency, &text);
    printf("save %d %.2f %s", (int)*payment, *amount, text);
    kova_text_get(note, &text);
    printf(" %s %d %d %d\n", text, (int)*cassette, (int)*activity, (int)*incoming);
    *payment = 7, *amount = 2.5, *cassette = 4, *activity = 9, *incoming = 0;
    kova_text_set(currency, "CHF");
    return kova_text_set(note, "stored");
}

static int32_t print(void* user, kova_text day) {
    (void)user, (void)day;
    return kova_fail("no paper"), 27;
}

static void released(void* user) {
    printf("released after %d\n", *(int*)user);
}

static void closed(void* user) {
    printf("closed %s\n", (const char*)user);
}

int main(void) {
    int events = 0, i;
    int32_t number = 0, flag = 0, year = 0, month = 0, day = 0;
    const char* text = "";
    kova_component drawer = NULL;
    kova_sink sink = NULL;
    kova_value result, values[7] = {{KOVA_INT32, 0, 0, NULL, NULL}, {KOVA_DOUBLE, 0, 12.5, NULL, NULL},
                                    {KOVA_TEXT, 0, 0, "text", NULL}, {KOVA_TEXT, 0, 0, "more", NULL},
                                    {KOVA_INT32, 4, 0, NULL, NULL}, {KOVA_INT32, 5, 0, NULL, NULL},
                                    {KOVA_INT32, 6, 0, NULL, NULL}};
    const kova_handlers handlers = {sizeof handlers, &events, save, NULL, print, NULL, released};
    printf("create %d\n", (int)kova_create(&drawer));
    printf("connect %d\n", (int)kova_connect(drawer, &handlers, &sink));
    kova_set_idCassa(drawer, 3);
    kova_set_ChiusuraAutomatica(drawer, 1);
    kova_set_ValutaAziendale(drawer, "€");
    kova_get_idCassa(drawer, &number);
    kova_get_ChiusuraAutomatica(drawer, &flag);
    kova_get_ValutaAziendale(drawer, &text);
    printf("options %d %d %s, version %d\n", (int)number, (int)flag, text, kova_version() >= KOVA_VERSION);
    printf("invoke %d", (int)kova_invoke_by_id(drawer, KOVA_ID_SalvaPagamento, values, 7, &result));
    printf(" %d %.1f %s %s %d %d %d\n", (int)values[0].integer, values[1].number, values[2].text, values[3].text,
           (int)values[4].integer, (int)values[5].integer, (int)values[6].integer);
    values[0].kind = KOVA_TEXT;
    values[0].text = "16/11/2026";
    printf("fails %d", (int)kova_invoke(drawer, "anteprima", values, 1, NULL));
    printf(" %d %s\n", (int)kova_last_error_number(), kova_last_error());
    printf("date %d", (int)kova_parse_date("16/11/2026", &year, &month, &day));
    kova_format_amount(1234.5, 2, &text);
    printf(" %d %d %d %s\n", (int)year, (int)month, (int)day, text);
    kova_on_closed(drawer, closed, "by the host");
    kova_Show(drawer, 0, NULL);
    kova_is_open(drawer, &flag);
    printf("open %d\n", (int)flag);
    kova_DiscardForm(drawer);
    for (i = 0; i < 1000; ++i)
        kova_process_events();
    kova_disconnect(sink);
    printf("release %d\n", (int)kova_release(drawer));
    printf("again %d\n", (int)kova_release(drawer));
    return 0;
}

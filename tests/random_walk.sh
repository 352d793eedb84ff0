#!/bin/sh
# Plays a long random scenario on both user interfaces: neither may crash, and both must see the same.
#
#   random_walk.sh KOVA_HOST SEED STEPS FOLDER
set -u
host=$1 seed=$2 steps=$3
output=$4/random-walk-$seed
rm -rf "$output" && mkdir -p "$output" && cd "$output" || exit 1

awk -v seed="$seed" -v steps="$steps" '
function any(n) { return int(rand() * n) }
function pick(text,  words) { return words[1 + any(split(text, words, "|"))] }
function switched() { return any(3) ? "True" : "False" }
# From a fresh dialog, so that the window is there; nothing that may close it comes before the end, where it may
# also stay open below what follows.
function countCoins(  gestures) {
    print "discard\nshow 0\ntab 0\npress CMD_CaricaMoneta"
    for (gestures = any(20); gestures > 0; --gestures)
        print pick("focus txtValuta " any(30) "|focus txtValuta " any(15) "|focus FlatEdit " any(3) "|key \"2\"|key \".\"|" \
            "key \"BACKSPACE\"|type \"7,x\\n\"|press CMD_Carica|press CMD_cancella|" \
            "focus txtValuta " any(30) "\ntype \"3\"\npress CMD_Carica\ndump coin|" \
            "text txtValuta " any(30) " \"2,5\"|runtime-language 9|dump coin|dump control txtPrimaValuta|" \
            "dump control txtValuta " any(30) "|dump control CMD_Carica|touch Pulsantiera_Pagamenti 1")
    print pick("press CMD_CaricaMoneta|press CMD_CaricaMoneta|press CMD_Annulla|close|discard|wait 60|dump forms")
}
# Likewise from a fresh dialog and with rules that leave the list its columns, which sort and group need.
function listMovements(  gestures) {
    print pick("software KOVA|software CASSA|software MIRANTE|software FALCA")
    print "handler Stampa clear\nfail-sql clear\nset AttivaVisualizzazionePrecontiDefinitivi " switched()
    print "set VisualizzaMovimentiUtenteLoggato " (any(4) ? "False" : "True") "\nset idUtente " 4 + any(2)
    print "set idCassa " pick("-1|7|8") "\ndiscard\nshow 0\ntab 1"
    for (gestures = 5 + any(15); gestures > 0; --gestures)
        print pick("sort \"" column() "\"|sort \"importo\"|group \"" column() "\"|ungroup|press cmdCaricaMovimenti|" \
            "text comboData \"" pick("16/11/2026|15/11/2026|11/16/2026|16/11/2026 10:00|domani|") "\"|" \
            "focus comboData\ntype \"" pick("1|/|x") "\"|tab 0\ntab 1|press cmd_print|press cmdAnteprima|dump report|" \
            "fail-sql clear\nfail-sql \"Operation\" \"riga\" rows " any(4) "|fail-sql clear|dump log|dump sql|" \
            "regional de-CH\npress cmdCaricaMovimenti\nregional it-IT|runtime-language 1031|runtime-language 9")
    print "dump report\nfail-sql clear\n" pick("tab 0|press PushButton1|discard|handler Stampa discard\npress cmd_print")
}
function column() {
    return pick("Data-Ora Aggiornamento|Tipo Operazione|Tipo Pagamento|importo|Note Movimento|Operatore")
}
BEGIN {
    srand(seed)
    print "create"
    print "connect"
    for (step = 0; step < steps; ++step) {
        if (any(14) == 0) {
            print pick("set DoppioInserimentoObbligatorio|set InserimentoAutomatico|set ChiusuraAutomatica|" \
                "set UsaSoloValutaAziendale|set PredisponiInserimentoFondoCassaIniziale|" \
                "set ActiveColorMetroStyle|set AttivaRecuperaFondoCassaPrecedente") " " switched()
            print "discard" # the deposit grid is filled when the dialog loads
            continue
        }
        if (any(30) == 0) {
            print pick("runtime-language 1040|runtime-language 1031|runtime-language 9|software KOVA|" \
                "software CASSA|set idPagamentoPredefinito 1|set idPagamentoPredefinito -1|regional en-US|" \
                "regional it-IT|connect|discard|handler SalvaPagamento throw \"no\" at 2|" \
                "handler SalvaPagamento discard|handler SalvaPagamento clear|handler ApriCassetto show|" \
                "handler Stampa discard|handler Stampa clear|fail-sql \"tabPagamenti\" \"x\" rows 2|" \
                "fail-sql clear")
            continue
        }
        if (any(25) == 0) {
            countCoins()
            continue
        }
        if (any(30) == 0) {
            listMovements()
            continue
        }
        print "show 0" # the last step may have closed it
        kind = any(18)
        if (kind < 3) print "touch Pulsantiera_Attivita " 2 + any(2)
        else if (kind < 5) print "touch " pick("Pulsantiera_Pagamenti|Pulsantiera_Pagamenti_Versamenti") " 1"
        else if (kind == 5) print "key \"" pick("1|5|0|.|*|BACKSPACE") "\""
        else if (kind == 6) print "keyboard \"" pick("a|Nota 1|è") "\""
        else if (kind == 7) print pick("focus txtNote|focus txtVisore|type \"7,x\"|press cmdNascondiTastiera")
        else if (kind == 8) print pick("text txtNote \"n\"|text txtVisore \"12\"|text txtVisore \"1.5\"")
        else if (kind == 9) print "press cmdCassetto " 1 + any(4)
        else if (kind == 10) print "wait " pick("10|50|60")
        else if (kind == 11) print "tab " any(2)
        else if (kind == 12) print any(4) ? "dump selection" : pick("press cmd_print|press PushButton1|close|press cmdAnnulla")
        else if (kind == 13) print pick("dump control txtNote|dump control txtVisore|dump forms|dump log|dump dialog")
        else if (kind < 16) print "press cmdConferma"
        else {
            print "tab 0\ntouch Pulsantiera_Pagamenti 1\ntouch Pulsantiera_Pagamenti_Versamenti 2\nwait 50"
            print "show 0\ntab 0\ntouch Pulsantiera_Attivita 2\ntouch Pulsantiera_Valuta \"€\"\nkey \"5\"\nwait 50\nshow 0\npress cmdConferma"
        }
    }
    print "dump log"
}' >walk.scenario

catalogues='INSERT INTO tabActivityDrawer VALUES'
{
    echo "sql \"$catalogues (2,'Prelievo',-1,4,1,20,1,1), (3,'Fondo',1,1,1,30,0,0), (4,'Non fiscale',1,10,0,40,0,0)\""
    echo "sql \"INSERT INTO tabPagamenti VALUES (1,'Contanti',1,'€',10), (2,'Carta',2,'€',20), (3,'Fr.',1,'CHF',30)\""
    echo "sql \"INSERT INTO tabValute VALUES ('€'), ('CHF')\""
    echo "sql \"INSERT INTO tabImpostazioni VALUES ('Attiva_Gestione_MultiCassetto','1')\""
    [ $((seed % 2)) -eq 0 ] || echo "sql \"INSERT INTO tabImpostazioni VALUES ('ValutaAziendale','CHF')\""
    echo "sql \"INSERT INTO tabImpostazioni VALUES ('idCassettoCausPred_Prelievi',2), ('idCassettoCausPred_Versamenti',3)\""
    movements='INSERT INTO tabPagamentiScontriniBackoffice VALUES'
    echo "sql \"$movements (1,'2026-11-16 09:30:00',2,1,-1,12.5,'€','b',1,7,4,NULL), (2,'2026-11-16 11:00:00',4,2,1,7,'CHF',NULL,0,7,5,NULL), (3,'2026-11-15 23:59:59',3,1,1,NULL,'€','',0,8,NULL,-1), (4,'2026-11-16 08:00:00',2,3,-1,1000,'€','a',2,8,4,3), (5,'2026-11-16 12:00:00',3,1,1,7,'€','2',10,7,5,NULL), (6,'2026-11-16 12:00:00',3,1,1,7,'€','2',10,7,5,NULL)\""
    echo "sql \"INSERT INTO tabUtenti VALUES (4,'Anna'), (5,'Zoe')\""
    cat walk.scenario
} >whole.scenario

for interface in headless qt; do
    if ! "$host" --script whole.scenario --ui $interface >$interface.trace 2>$interface.errors; then
        echo "$interface: exit status $?"
        tail -n 20 $interface.errors
        exit 1
    fi
done
counted=$(grep -c '^coin IndiceMoneta=[0-9]' headless.trace)
echo "$counted looks at a coin count"
[ "$counted" -ge 5 ] || { echo "a walk that counts nothing shows nothing"; exit 1; }
listed=$(grep -c '^record ' headless.trace)
echo "$listed movements listed"
[ "$listed" -ge 50 ] || { echo "a walk that lists nothing shows nothing"; exit 1; }
saved=$(grep -c '^event SalvaPagamento' headless.trace)
echo "$saved movements in $steps steps"
[ "$saved" -ge 5 ] || { echo "a walk that saves nothing shows nothing"; exit 1; }
diff -u headless.trace qt.trace

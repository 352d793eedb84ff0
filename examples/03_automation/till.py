# Untried: nobody has run this yet.
# A till in Python with pywin32 (pip install pywin32), of the same word size as the component. Its argument is a
# connection text.
import sys

import pythoncom
import win32com.client
from win32com.server.exception import COMException

stored = []


class Till:
    # Store the movement here; raise if you cannot, and the cashier keeps the entry and reads why. What the method returns
    # goes into the arguments by reference, in their order; None leaves them.
    def OnSalvaPagamento(self, idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso):
        if importo > 1000:
            print("refused", importo)
            raise COMException("More than 1000 is the manager's", scode=-2147024891)
        direction = "in" if isIncasso else "out"
        stored.append(f"{direction} {importo:g} {Valuta}, payment {idpagamento}, drawer {cassetto}, "
                      f"activity {tipoIncasso}: {note}")

    def OnStampa(self, DataOperazione):
        print("print", DataOperazione)

    def OnAnteprima(self, DataOperazione):
        print("preview", DataOperazione)

    def OnApriCassetto(self):
        print("open the drawer")


pythoncom.CoInitialize()
# Makes the wrapper of the type library first, which the events need.
drawer = win32com.client.DispatchWithEvents("Kova_Drawer_Man.cls_Kova_Drawer_Man", Till)
drawer.InizializzaByConnString(sys.argv[1])
drawer.idCassa = 1
drawer.Show()  # returns when the dialog has been closed
print("stored:", *stored, sep="\n")

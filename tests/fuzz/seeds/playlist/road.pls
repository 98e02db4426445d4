[playlist]
NumberOfEntries=3
File10 = last.ogg
File2=..\home\song.mp3
Title2=Song
File3=E:\eight.wma
File4=more.pls
